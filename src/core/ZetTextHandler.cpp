#include <zet/ZetTextHandler>
#include <zet/ZetTextMsg>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetTextHandler::className() const
{
    return L"ZetTextHandler";
}

void QorDefTextHandler::postMessage(const ZetTextMsg& message)
{
    if (message.kind() == ZetTextMsg::Error) {
        throw ZetTextMsg(message);
    }
}

}  // namespace zet
