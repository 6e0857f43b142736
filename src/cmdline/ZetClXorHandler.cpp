#include <zet/ZetClXorHandler>

#include <algorithm>

#include "cmdline/ZetClFault"
#include "core/ZetUnitInit"

namespace zet {

namespace {

bool holds(const ZetClXorHandler::Group& group, const ZetClArgPtr& arg)
{
    return std::find(group.begin(), group.end(), arg) != group.end();
}

}  // namespace

ZetString ZetClXorHandler::className() const
{
    return L"ZetClXorHandler";
}

int ZetClXorHandler::check(const ZetClArgPtr& arg)
{
    const auto group = std::find_if(m_groups.begin(), m_groups.end(), [&](const Group& g) { return holds(g, arg); });
    if (group == m_groups.end()) {
        return arg->isRequired() ? 1 : 0;
    }
    for (const ZetClArgPtr& member : *group) {
        if (member != arg && (member->alreadySet() || member->xorSet())) {
            // KEPT: the text ends in a digit instead of a name. Test: ZetClXorHandler.secondMember.
            internal::throwClFault(internal::kMutuallyExclusive + ZetString(L"1"), L"ZetClXorHandler", __LINE__);
        }
    }
    for (const ZetClArgPtr& member : *group) {
        if (member != arg) {
            member->setXorSet(true);
        }
    }
    return arg->allowMore() ? 0 : static_cast<int>(group->size());
}

bool ZetClXorHandler::contains(const ZetClArgPtr& arg) const
{
    return std::any_of(m_groups.begin(), m_groups.end(), [&](const Group& group) { return holds(group, arg); });
}

}  // namespace zet
