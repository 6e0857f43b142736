#include <zet/ZetClParser>

#include <algorithm>
#include <cstdlib>

#include <zet/ZetClExitException>
#include <zet/ZetClHelpVisitor>
#include <zet/ZetClStdOutput>
#include <zet/ZetClSwitchArg>
#include <zet/ZetClVersionVisitor>
#include <zet/ZetStrList>

#include "cmdline/ZetClFault"
#include "core/ZetUnitInit"

namespace zet {

namespace {

[[noreturn]] void fail(const ZetString& text, int line)
{
    internal::throwClFault(text, L"ZetClParser", line);
}

/// Whether \p word is a group of switches that are all consumed.
bool emptyCombined(const ZetString& word)
{
    return word.rfind(ZetClArg::flagStart, 0) == 0 && ZetClArg::lastCombined(word);
}

}  // namespace

ZetClParser::ZetClParser(const ZetString& description, const ZetString& version, wchar_t delimiter, bool helpAndVersion)
    : m_programName(L"not_set_yet"),
      m_description(description),
      m_version(version),
      m_requiredCount(0),
      m_delimiter(delimiter),
      m_output(new ZetClStdOutput),
      m_ignoreRestVisitor(new ZetClIgnoreRestVisitor),
      m_exitOnFinish(true),
      m_optionalUnlabeledSeen(false),
      m_handleFailures(true),
      m_helpAndVersion(helpAndVersion)
{
    ZetClArg::rdelimiter() = delimiter;
    if (m_helpAndVersion) {
        addHelpAndVersion();
    }
}

ZetClParser::~ZetClParser() = default;

ZetString ZetClParser::className() const
{
    return L"ZetClParser";
}

void ZetClParser::addHelpAndVersion()
{
    ZetClParser::add(
        new ZetClSwitchArg(ZetMetaProperty(L'h', L"help", L"Displays usage information and exits", ZetMetaType::Bool),
                           false, new ZetClHelpVisitor(this, m_output)));
    ZetClParser::add(new ZetClSwitchArg(
        ZetMetaProperty(L'v', L"version", L"Displays version information and exits", ZetMetaType::Bool), false,
        new ZetClVersionVisitor(this, m_output)));
}

void ZetClParser::add(const ZetClArgPtr& arg)
{
    checkUnlabeled(*arg);
    for (const ZetClArgPtr& other : m_argList) {
        if (other->matches(*arg)) {
            fail(L"Argument with same flag/name already exists: " + arg->longID(L"val"), __LINE__);
        }
    }
    m_argList.insert(arg->isLabeled() ? m_argList.begin() : m_argList.end(), arg);
    if (arg->isRequired()) {
        ++m_requiredCount;
    }
}

void ZetClParser::checkUnlabeled(const ZetClArg& arg)
{
    if (arg.isLabeled()) {
        return;
    }
    if (m_optionalUnlabeledSeen) {
        fail(L"No more unlabeled arguments are allowed following an optional unlabeled arg: " + arg.name(), __LINE__);
    }
    m_optionalUnlabeledSeen = !arg.isRequired() && !arg.isMultiValue();
}

void ZetClParser::xorAdd(const ZetClArgPtr& a, const ZetClArgPtr& b)
{
    xorAdd(std::vector<ZetClArgPtr>{a, b});
}

void ZetClParser::xorAdd(const std::vector<ZetClArgPtr>& group)
{
    for (const ZetClArgPtr& member : group) {
        member->addFlag(ZetMetaFlag::Required);
        member->setRequireLabel(L"OR required");
        add(member);
    }
    if (!group.empty()) {
        m_xorHandler.add(group);
    }
}

ZetTextMsg ZetClParser::parse(int argc, const char* const* argv)
{
    std::vector<ZetString> args;
    args.reserve(static_cast<std::size_t>(std::max(argc, 0)));
    for (int i = 0; i < argc; ++i) {
        args.push_back(toWide(argv[i]));
    }
    return parse(args);
}

ZetTextMsg ZetClParser::parse(std::vector<ZetString>& args)
{
    ZetTextMsg result(ZetString(), ZetTextMsg::Error);
    try {
        processArgs(args);
    } catch (const ZetClExitException& end) {
        if (m_exitOnFinish) {
            std::exit(end.status());
        }
    } catch (const ZetTextMsg& message) {
        if (!m_handleFailures) {
            throw;
        }
        m_output->failure(*this, message);
        result = message;
        if (m_exitOnFinish) {
            std::exit(1);
        }
    }
    return result;
}

void ZetClParser::processArgs(std::vector<ZetString>& args)
{
    if (!args.empty()) {
        m_programName = args.front();
        args.erase(args.begin());
    }
    int seen = 0;
    for (int i = 0; static_cast<std::size_t>(i) < args.size(); ++i) {
        seen += processWord(&i, args);
    }
    if (m_requiredCount > seen) {
        throwMissingArgs();
    }
    if (m_requiredCount < seen) {
        fail(L"Too many arguments!", __LINE__);
    }
}

/// Lets the arguments look at one word. Returns how many required arguments it stands for.
int ZetClParser::processWord(int* i, std::vector<ZetString>& args)
{
    for (const ZetClArgPtr& arg : m_argList) {
        if (arg->processArg(i, args)) {
            return m_xorHandler.check(arg);
        }
    }
    const ZetString& word = args[static_cast<std::size_t>(*i)];
    if (!word.empty() && !emptyCombined(word)) {
        fail(L"Couldn't find match for argument: " + word, __LINE__);
    }
    return 0;
}

void ZetClParser::throwMissingArgs() const
{
    ZetStrList missing;
    for (const ZetClArgPtr& arg : m_argList) {
        if (arg->isRequired() && !arg->alreadySet() && !arg->xorSet()) {
            missing.append(arg->name());
        }
    }
    const wchar_t* text = missing.size() < 2 ? L"Required argument missing: " : L"Required arguments missing: ";
    fail(text + missing.toString(L", "), __LINE__);
}

void ZetClParser::reset()
{
    for (const ZetClArgPtr& arg : m_argList) {
        arg->reset();
    }
    m_programName.clear();
    m_ignoreRestVisitor->reset();
}

}  // namespace zet
