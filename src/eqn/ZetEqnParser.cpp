#include <zet/ZetEqnParser>

#include <utility>

#include "core/ZetUnitInit"
#include "eqn/ZetEqnParser_p"

namespace zet {

ZetEqnParser::ZetEqnParser() : m_p(std::make_unique<ZetEqnParser_p>()) {}

ZetEqnParser::ZetEqnParser(const ZetEqnParser& other)
    : ZetObject(other), ZetRefCounted(other), m_p(std::make_unique<ZetEqnParser_p>(*other.m_p))
{}

ZetEqnParser& ZetEqnParser::operator=(const ZetEqnParser& other)
{
    *m_p = *other.m_p;
    return *this;
}

ZetEqnParser::~ZetEqnParser() = default;

ZetString ZetEqnParser::className() const
{
    return L"ZetEqnParser";
}

const ZetString& ZetEqnParser::expression() const
{
    return m_p->expression();
}

const ZetStrList& ZetEqnParser::variables() const
{
    return m_p->variableNames();
}

const ZetVariant& ZetEqnParser::value(const ZetString& name) const
{
    return m_p->value(name);
}

bool ZetEqnParser::parse(const ZetString& text, ZetTextMsg* message)
{
    m_p->parse(text);
    const bool isGood = m_p->lastMessage().text().empty();
    if (!isGood && message) {
        *message = m_p->lastMessage();
    }
    return isGood;
}

void ZetEqnParser::setValue(const ZetString& name, const ZetVariant& value)
{
    m_p->setValue(name, value);
}

void ZetEqnParser::setValue(const ZetString& name, ZetVariant&& value)
{
    m_p->setValue(name, std::move(value));
}

const ZetVariant& ZetEqnParser::evaluate(ZetTextMsg* message)
{
    return m_p->evaluate(message);
}

int ZetEqnParser::collapse()
{
    return m_p->collapse();
}

}  // namespace zet
