#include <zet/ZetCoreLibMgr>

#include "core/ZetCoreLibMgr_p"
#include "core/ZetUnitInit"

namespace zet {

ZetCoreLibMgr_p::ZetCoreLibMgr_p() : m_initialized(false), m_version(1, 0, 0), m_defaultHandler(new QorDefTextHandler)
{}

ZetCoreLibMgr_p::~ZetCoreLibMgr_p()
{
    deInitialize();
    m_userHandler = ZetTextHandlerPtr();
    m_defaultHandler = ZetTextHandlerPtr();
}

int ZetCoreLibMgr_p::initialize(const ZetTextHandlerPtr& handler)
{
    if (!m_initialized) {
        setTextHandler(handler);
        m_initialized = true;
    }
    return 0;
}

void ZetCoreLibMgr_p::deInitialize()
{
    if (m_initialized) {
        m_userHandler = ZetTextHandlerPtr();
        m_initialized = false;
    }
}

ZetTextHandlerPtr ZetCoreLibMgr_p::textHandler() const
{
    return m_userHandler ? m_userHandler : m_defaultHandler;
}

void ZetCoreLibMgr_p::setTextHandler(const ZetTextHandlerPtr& handler)
{
    // The handler may be held by the one before it alone, and that goes now.
    const ZetTextHandlerPtr next = handler;
    m_userHandler = next;
}

// Constant initialisation: messages can be posted from any static initialiser.
constinit ZetCoreLibMgr_pPtr ZetCoreLibMgr::m_p;

ZetCoreLibMgr::ZetCoreLibMgr()
{
    if (!m_p) {
        m_p = new ZetCoreLibMgr_p;
    }
}

ZetCoreLibMgr::ZetCoreLibMgr(const ZetCoreLibMgr&) = default;
ZetCoreLibMgr& ZetCoreLibMgr::operator=(const ZetCoreLibMgr&) = default;
ZetCoreLibMgr::~ZetCoreLibMgr() = default;

ZetCoreLibMgr& ZetCoreLibMgr::instance()
{
    static ZetCoreLibMgr manager;
    return manager;
}

ZetString ZetCoreLibMgr::className() const
{
    return L"ZetCoreLibMgr";
}

int ZetCoreLibMgr::initialize(const ZetTextHandlerPtr& handler)
{
    return m_p->initialize(handler);
}

void ZetCoreLibMgr::deInitialize()
{
    m_p->deInitialize();
}

bool ZetCoreLibMgr::isInitialized() const
{
    return m_p->isInitialized();
}

ZetTextHandlerPtr ZetCoreLibMgr::textHandler() const
{
    return m_p->textHandler();
}

void ZetCoreLibMgr::setTextHandler(const ZetTextHandlerPtr& handler)
{
    m_p->setTextHandler(handler);
}

const ZetVersion& ZetCoreLibMgr::version() const
{
    return m_p->coreVersion();
}

}  // namespace zet
