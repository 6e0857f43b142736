#include "eqn/ZetEqnParser_p"

#include <sstream>
#include <typeinfo>

#include <zet/ZetMathConst>
#include <zet/ZetScalar>

#include "core/ZetUnitInit"
#include "eqn/ZetConstNode"
#include "eqn/ZetFcnNode"
#include "eqn/ZetFlexScanner"
#include "eqn/ZetOperand"
#include "reflect/ZetBuiltInVariants"
#include "zet_grammar.hh"

namespace zet {

using namespace internal;

namespace {

// The constants by their names, and the name that everybody tries first.
ZetMathConst constantOf(const ZetString& name)
{
    return name == L"pi" ? ZetMathConst(ZetMathConst::Pi) : ZetMathConst(name);
}

// The plain double that a variant holds; null for any other implementation.
ZetDoubleVariant* doubleOf(const ZetVariant& value)
{
    ZetVariantIF* const implementation = value.implementation().get();
    return typeid(*implementation) == typeid(ZetDoubleVariant) ? static_cast<ZetDoubleVariant*>(implementation)
                                                               : nullptr;
}

// Writes the number of a variant that dies into the one that the nodes hold, where nobody else holds
// either: then nobody can tell it from the variant itself. Whether it did.
bool writeNumber(const std::vector<ZetVarNodePtr>& nodes, const ZetVariant& value)
{
    const ZetDoubleVariant* const number = doubleOf(value);
    if (!number || !number->isHeldBy(1) || nodes.empty()) {
        return false;
    }
    ZetDoubleVariant* const held = doubleOf(nodes.front()->value());
    if (!held || !held->isHeldBy(nodes.size())) {
        return false;
    }
    *static_cast<double*>(held->data()) = *static_cast<const double*>(number->data());
    return true;
}

int collapseCalls(ZetEqnNodePtr* tree)
{
    int total = 0;
    int changes = 0;
    do {
        changes = 0;
        const ZetEqnNodePtr folded = (*tree)->toFcnNode()->collapse(&changes);
        total += changes;
        if (folded) {
            *tree = folded;
        }
    } while (changes > 0 && (*tree)->toFcnNode());
    return total;
}

}  // namespace

ZetEqnParser_p::ZetEqnParser_p() : m_lastMessage(ZetString(), ZetTextMsg::Error) {}

ZetEqnParser_p::ZetEqnParser_p(const ZetEqnParser_p& other) : ZetEqnParser_p()
{
    *this = other;
}

ZetEqnParser_p& ZetEqnParser_p::operator=(const ZetEqnParser_p& other)
{
    if (this == &other) {
        return *this;
    }
    clear();
    if (other.m_equations.empty() || !other.m_lastMessage.text().empty()) {
        return *this;
    }
    m_expression = other.m_expression;
    m_variableNames = other.m_variableNames;
    m_result = other.m_result;
    for (const auto& [name, tree] : other.m_equations) {
        const ZetEqnNodePtr copy = tree->clone();
        m_equations.emplace_back(name, copy);
    }
    collectVariables();
    return *this;
}

ZetEqnNodeConstPtr ZetEqnParser_p::root() const
{
    return m_equations.empty() ? ZetEqnNodeConstPtr() : ZetEqnNodeConstPtr(m_equations.front().second);
}

const ZetVariant& ZetEqnParser_p::value(const ZetString& name) const
{
    static const ZetVariant invalid;
    const auto found = m_variableNodes.find(name);
    return found == m_variableNodes.end() || found->second.empty() ? invalid : found->second.front()->value();
}

void ZetEqnParser_p::clear()
{
    if (m_expression.empty()) {
        return;
    }
    m_equations.clear();
    m_variableNodes.clear();
    m_variableNames.clear();
    m_expression.clear();
    m_lastMessage.clear();
    m_result = ZetVariant();
}

void ZetEqnParser_p::parse(ZetString text)
{
    clear();
    if (text.empty()) {
        return;
    }
    m_expression = text;
    std::string errorText;
    try {
        parseExpression(&errorText);
    } catch (...) {
        if (errorText.empty()) {
            errorText = "Unknown exception from parametric expression parser.";
        }
    }
    if (!errorText.empty()) {
        setMessage(toWide(errorText), __LINE__);
    }
}

void ZetEqnParser_p::parseExpression(std::string* errorText)
{
    std::istringstream text(toMultibyte(m_expression));
    ZetFlexScanner scanner(&text);
    ZetParsedEquations parsed;
    if (ZetBisonParser(&scanner, &parsed, errorText).parse() != 0) {
        return;
    }
    for (const auto& [name, tree] : parsed) {
        m_equations.emplace_back(toWide(name), tree);
    }
    collectVariables();
    if (m_lastMessage.text().empty()) {
        initMathConstants();
    }
}

void ZetEqnParser_p::collectVariables()
{
    for (const auto& [name, tree] : m_equations) {
        collectVariables(tree);
    }
}

// In the order of the text, on a stack of our own: a text may nest without limit.
void ZetEqnParser_p::collectVariables(const ZetEqnNodePtr& tree)
{
    std::vector<ZetEqnNode*> waiting = {tree.get()};
    while (!waiting.empty()) {
        ZetEqnNode* const node = waiting.back();
        waiting.pop_back();
        if (!node) {
            continue;
        }
        if (ZetVarNode* const variable = node->toVarNode()) {
            insertVariable(variable);
        } else if (const ZetFcnNode* const call = node->toFcnNode()) {
            judge(*call);
            for (auto arg = call->args().rbegin(); arg != call->args().rend(); ++arg) {
                waiting.push_back(arg->get());
            }
        }
    }
}

// Names that were folded away stay listed, so there are fewer names than entries only for a new one.
void ZetEqnParser_p::insertVariable(ZetVarNode* node)
{
    Nodes& nodes = m_variableNodes[node->name()];
    if (m_variableNames.size() < m_variableNodes.size()) {
        m_variableNames.append(node->name());
    }
    nodes.emplace_back(node);
}

// The first message stands.
void ZetEqnParser_p::judge(const ZetFcnNode& call)
{
    if (!m_lastMessage.text().empty()) {
        return;
    }
    if (!call.fcn()) {
        setMessage(L"'" + call.name() + L"()' is not a valid parametric function.", __LINE__);
    } else if (!call.hasFittingArgs()) {
        setMessage(L"'" + call.name() + L"()' does not have the correct number of arguments.", __LINE__);
    }
}

void ZetEqnParser_p::initMathConstants()
{
    for (const auto& [name, nodes] : m_variableNodes) {
        const ZetMathConst constant = constantOf(name);
        if (constant.type() != ZetMathConst::Invalid) {
            setValue(name, constant.value());
        }
    }
}

void ZetEqnParser_p::setMessage(const ZetString& text, int line)
{
    m_lastMessage = ZetTextMsg(text, L"ZetEqnParser", line, ZetTextMsg::Error);
}

void ZetEqnParser_p::setValue(const ZetString& name, const ZetVariant& value)
{
    const auto found = m_variableNodes.find(name);
    if (found != m_variableNodes.end()) {
        setValue(found->second, value);
    }
}

void ZetEqnParser_p::setValue(const ZetString& name, ZetVariant&& value)
{
    const auto found = m_variableNodes.find(name);
    if (found == m_variableNodes.end()) {
        return;
    }
    if (writeNumber(found->second, value)) {
        forgetResult();
    } else {
        setValue(found->second, value);
    }
}

// The value may be the result itself, or lie in the value that it replaces. So the result goes last; and
// the value replaced, which all nodes share, goes when the last of them has the new one.
void ZetEqnParser_p::setValue(const Nodes& nodes, const ZetVariant& value)
{
    for (const ZetVarNodePtr& node : nodes) {
        node->setValue(value);
    }
    forgetResult();
}

void ZetEqnParser_p::forgetResult()
{
    if (m_result.isValid()) {
        m_memory.release(m_result);
    }
}

void ZetEqnParser_p::define(const ZetString& name, const ZetVariant& value)
{
    ZetVariant before = this->value(name);
    setValue(name, value);
    m_memory.release(before);
}

const ZetVariant& ZetEqnParser_p::evaluate(ZetTextMsg* message)
{
    if (m_result.isValid()) {
        return m_result;
    }
    try {
        for (std::size_t i = m_equations.size(); i-- > 0 && i < m_equations.size();) {
            const auto [name, tree] = m_equations[i];  // kept: the handler of a message may parse anew
            ZetOperand operand = tree->operand();
            const ZetVariant& value = operand.value(m_memory);
            if (!name.empty()) {
                define(name, value);
            }
            if (i == 0) {
                m_result = value;
            }
        }
    } catch (const ZetTextMsg& failure) {
        m_result.clear();  // a handler may have evaluated meanwhile
        if (message) {
            *message = failure;
        }
    }
    return m_result;
}

int ZetEqnParser_p::collapse()
{
    int total = 0;
    for (auto equation = m_equations.rbegin(); equation != m_equations.rend(); ++equation) {
        ZetEqnNodePtr& tree = equation->second;
        const ZetVarNode* const variable = tree->toVarNode();
        if (tree->toFcnNode()) {
            total += collapseCalls(&tree);
        } else if (variable && variable->value().isValid()) {
            tree = new ZetConstNode(variable->value());
            // KEPT: the count starts over here. Test: ZetEqnParser.collapseOfAVariableCountsOne.
            total = 1;
        }
    }
    if (total >= 1) {
        m_variableNodes.clear();
        m_lastMessage.clear();
        m_result = ZetVariant();
        collectVariables();
    }
    return total;
}

}  // namespace zet
