#include <zet/ZetMetaDataSet>

#include <functional>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include <zet/ZetMetaProperties>

#include "support/ZetScopedLocale"

namespace zet {
namespace {

/// A reader that counts the questions and answers by the functions it was given.
class Reader : public ZetMetaDataReader
{
public:
    using Answer = std::function<ZetTextMsg(ZetMetaDataSet*)>;

    explicit Reader(Answer fields, Answer subsets = Answer()) : m_fields(fields), m_subsets(subsets) {}

    ZetTextMsg readSubsets(ZetMetaDataSet* set) override { return answer(m_subsets, subsetReads, set); }
    ZetTextMsg readFields(ZetMetaDataSet* set) override { return answer(m_fields, fieldReads, set); }
    bool canRead() const override { return able; }

    bool able = true;
    int fieldReads = 0;
    int subsetReads = 0;

private:
    static ZetTextMsg answer(const Answer& given, int& reads, ZetMetaDataSet* set)
    {
        ++reads;
        return given ? given(set) : ZetTextMsg(L"", ZetTextMsg::Error);
    }

    Answer m_fields;
    Answer m_subsets;
};

ZetTextMsg good()
{
    return ZetTextMsg(L"", ZetTextMsg::Error);
}

/// An answer that makes the named items.
Reader::Answer makeFields(std::initializer_list<const wchar_t*> names)
{
    return [all = std::vector<const wchar_t*>(names)](ZetMetaDataSet* set) {
        for (const wchar_t* name : all) {
            set->rfield(name).setValues({ZetVariant(name)});
        }
        return good();
    };
}

Reader::Answer makeSubsets(std::initializer_list<const wchar_t*> names)
{
    return [all = std::vector<const wchar_t*>(names)](ZetMetaDataSet* set) {
        for (const wchar_t* name : all) {
            set->rsubset(name);
        }
        return good();
    };
}

/// A set and the reader in it.
struct Lazy
{
    explicit Lazy(Reader::Answer fields, Reader::Answer subsets = Reader::Answer())
        : reader(new Reader(fields, subsets)), keep(reader), set(L"lazy", L"", keep)
    {}

    Reader* reader;
    ZetMetaDataReaderPtr keep;
    ZetMetaDataSet set;
};

ZetString textOf(const ZetMetaDataSet& set)
{
    std::wostringstream out;
    out << set;
    return out.str();
}

ZetStrList keysOf(const std::map<ZetString, ZetMetaDataField>& items)
{
    ZetStrList keys;
    for (const auto& [key, item] : items) {
        keys.append(key);
    }
    return keys;
}

/// The number behind a generated name.
unsigned long numberIn(const ZetString& name, const ZetString& prefix)
{
    EXPECT_EQ(name.substr(0, prefix.size()), prefix);
    return std::stoul(name.substr(prefix.size()));
}

TEST(ZetMetaDataSet, construction)
{
    const ZetMetaDataSet empty;
    EXPECT_EQ(empty.className(), L"ZetMetaDataSet");
    EXPECT_EQ(empty.name(), L"");
    EXPECT_TRUE(empty.fields().empty());
    EXPECT_TRUE(empty.subsets().empty());
    EXPECT_TRUE(empty.fieldNames().empty());
    EXPECT_TRUE(empty.subsetNames().empty());

    const ZetMetaDataSet named(L"n", L"d");
    EXPECT_EQ(named.name(), L"n");
    EXPECT_EQ(named.description(), L"d");
    EXPECT_EQ(ZetMetaDataSet(L"n").description(), L"");
}

TEST(ZetMetaDataSet, createsAndFinds)
{
    ZetMetaDataSet set(L"image");
    set.rfield(L"width").setValues({640});
    set.rfield(L"bands").setValues({3});
    set.rsubset(L"sensor").rfield(L"gain").setValues({1.5});
    set.rsubset(L"a/b").setDescription(L"a slash means nothing");

    EXPECT_EQ(set.fieldNames(), ZetStrList({L"width", L"bands"}));
    EXPECT_EQ(keysOf(set.fields()), ZetStrList({L"bands", L"width"}));
    EXPECT_EQ(set.subsetNames(), ZetStrList({L"sensor", L"a/b"}));
    EXPECT_TRUE(set.containsField(L"width"));
    EXPECT_FALSE(set.containsField(L"gain"));
    EXPECT_TRUE(set.containsSubset(L"sensor"));
    EXPECT_FALSE(set.containsSubset(L"a"));
    EXPECT_EQ(set.field(L"width", false).values()[0].value<int>(), 640);
    EXPECT_EQ(set.subset(L"sensor", false).field(L"gain", false).values()[0].value<double>(), 1.5);

    // the same name is the same item
    set.rfield(L"width").setDescription(L"pixels");
    EXPECT_EQ(set.field(L"width", false).description(), L"pixels");
    EXPECT_EQ(set.fieldNames().size(), 2u);
}

TEST(ZetMetaDataSet, notFoundIsAnItemWithoutName)
{
    const ZetMetaDataSet set(L"n", L"d");
    for (const bool recursive : {false, true}) {
        EXPECT_EQ(set.subset(L"x", recursive), ZetMetaDataSet());
        EXPECT_EQ(set.field(L"x", recursive), ZetMetaDataField());
    }
    EXPECT_TRUE(set.subsets().empty());
    EXPECT_TRUE(set.subsetNames().empty());
    EXPECT_TRUE(set.fieldNames().empty());
}

TEST(ZetMetaDataSet, searchesInTheOrderOfKeys)
{
    ZetMetaDataSet set(L"root");
    set.rsubset(L"z").rfield(L"f").setDescription(L"in z");
    set.rsubset(L"b").rsubset(L"deep").rfield(L"f").setDescription(L"in b/deep");
    set.rsubset(L"c").rfield(L"f").setDescription(L"in c");
    set.rsubset(L"c").rsubset(L"deep").setDescription(L"in c");
    set.rsubset(L"b").rsubset(L"deep").setDescription(L"in b");

    EXPECT_EQ(set.field(L"f", false).name(), L"");
    // depth first: what lies deep in b comes before c
    EXPECT_EQ(set.field(L"f", true).description(), L"in b/deep");
    EXPECT_EQ(set.subset(L"deep", false).name(), L"");
    EXPECT_EQ(set.subset(L"deep", true).description(), L"in b");
    EXPECT_EQ(set.subset(L"missing", true).name(), L"");

    // own fields come first
    set.rfield(L"f").setDescription(L"own");
    EXPECT_EQ(set.field(L"f", true).description(), L"own");

    // an item that was renamed to nothing is not found by a search
    set.rsubset(L"b").rsubset(L"deep").setName(L"");
    EXPECT_EQ(set.subset(L"deep", true).description(), L"in c");
}

TEST(ZetMetaDataSet, generatedNamesNeverRepeat)
{
    ZetMetaDataSet set;
    EXPECT_EQ(set.rsubset(L"").name(), L"subset");
    const unsigned long first = numberIn(set.rsubset(L"").name(), L"subset");
    EXPECT_GE(first, 1u);
    EXPECT_EQ(numberIn(set.rsubset(L"").name(), L"subset"), first + 1);

    // another set takes the plain name, then the next number of the same counter
    ZetMetaDataSet other;
    EXPECT_EQ(other.rsubset(L"").name(), L"subset");
    EXPECT_EQ(numberIn(other.rsubset(L"").name(), L"subset"), first + 2);
    EXPECT_EQ(numberIn(set.rsubset(L"").name(), L"subset"), first + 3);

    // a taken number is passed over
    set.rsubset(L"subset" + std::to_wstring(first + 4));
    EXPECT_EQ(numberIn(set.rsubset(L"").name(), L"subset"), first + 5);

    // fields count on their own
    EXPECT_EQ(set.rfield(L"").name(), L"field");
    const unsigned long firstField = numberIn(set.rfield(L"").name(), L"field");
    set.rsubset(L"");
    EXPECT_EQ(numberIn(set.rfield(L"").name(), L"field"), firstField + 1);

    // and clearing gives no number back
    set.clear();
    EXPECT_EQ(set.rfield(L"").name(), L"field");
    EXPECT_EQ(numberIn(set.rfield(L"").name(), L"field"), firstField + 2);
}

TEST(ZetMetaDataSet, countersStartAtOne)
{
    // in a process of its own, where nothing was named before
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            ZetMetaDataSet set;
            set.rsubset(L"");
            set.rfield(L"");
            const bool good = set.rsubset(L"").name() == L"subset1" && set.rfield(L"").name() == L"field1";
            std::exit(good ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(ZetMetaDataSet, removedNamesStayListed)
{
    ZetMetaDataSet set(L"n");
    set.rfield(L"a").setDescription(L"d");
    set.rsubset(L"s").setDescription(L"d");
    EXPECT_EQ(set.removeField(L"a"), 0);
    EXPECT_EQ(set.removeField(L"a"), 1);
    EXPECT_EQ(set.removeField(L"x"), 1);
    EXPECT_EQ(set.removeSubset(L"s"), 0);
    EXPECT_EQ(set.removeSubset(L"s"), 1);
    EXPECT_EQ(set.fieldNames(), ZetStrList({L"a"}));
    EXPECT_FALSE(set.containsField(L"a"));
    EXPECT_EQ(set.subsetNames(), ZetStrList({L"s"}));
    EXPECT_FALSE(set.containsSubset(L"s"));
    EXPECT_EQ(textOf(set), L"n; \n(,\"\",0,)\n\n; \n");

    // made anew, the name is listed anew
    set.rfield(L"a");
    EXPECT_EQ(set.fieldNames(), ZetStrList({L"a", L"a"}));
    EXPECT_EQ(textOf(set), L"n; \n(a,\"\",0,)\n(a,\"\",0,)\n\n; \n");
}

TEST(ZetMetaDataSet, copiesPartWhenWritten)
{
    ZetMetaDataSet original(L"n");
    original.rfield(L"f");
    original.rsubset(L"s");
    const ZetMetaDataSet kept = original;

    original.rsubset(L"t");
    original.rfield(L"g");
    original.rsubset(L"s").rfield(L"inner");
    EXPECT_EQ(kept.subsetNames(), ZetStrList({L"s"}));
    EXPECT_EQ(kept.fieldNames(), ZetStrList({L"f"}));
    EXPECT_FALSE(kept.subset(L"s", false).containsField(L"inner"));
    EXPECT_TRUE(original.subset(L"s", false).containsField(L"inner"));

    ZetMetaDataSet cleared = original;
    cleared.clear();
    EXPECT_TRUE(cleared.fieldNames().empty());
    EXPECT_TRUE(cleared.subsets().empty());
    EXPECT_EQ(original.subsetNames(), ZetStrList({L"s", L"t"}));

    // name and description are not shared
    ZetMetaDataSet renamed = original;
    renamed.setName(L"m");
    EXPECT_EQ(original.name(), L"n");
}

TEST(ZetMetaDataSet, removalReachesCopies)
{
    ZetMetaDataSet original(L"n");
    original.rfield(L"f");
    original.rsubset(L"s").rfield(L"inner");
    ZetMetaDataSet copy = original;
    EXPECT_EQ(copy.removeSubset(L"s"), 0);
    EXPECT_FALSE(original.containsSubset(L"s"));
    EXPECT_EQ(original.removeField(L"f"), 0);
    EXPECT_FALSE(copy.containsField(L"f"));

    // so removal from a copy that a question gave out changes the original
    original.rsubset(L"s").rfield(L"inner");
    EXPECT_EQ(original.subset(L"s", false).removeField(L"inner"), 0);
    EXPECT_FALSE(original.subset(L"s", false).containsField(L"inner"));

    // once written, the copy is on its own
    original.rfield(L"h");
    copy.rfield(L"g");
    EXPECT_EQ(copy.removeField(L"g"), 0);
    EXPECT_EQ(copy.removeField(L"h"), 1);
    EXPECT_TRUE(original.containsField(L"h"));
}

TEST(ZetMetaDataSet, referenceAcrossACopyWritesIntoBoth)
{
    ZetMetaDataSet original(L"n");
    ZetMetaDataSet& subset = original.rsubset(L"s");
    const ZetMetaDataSet copy = original;
    subset.rfield(L"late");
    EXPECT_TRUE(original.subset(L"s", false).containsField(L"late"));
    EXPECT_TRUE(copy.subset(L"s", false).containsField(L"late"));
}

TEST(ZetMetaDataSet, aCopyCanBecomeASubset)
{
    ZetMetaDataSet set(L"n");
    set.rfield(L"f");
    const ZetMetaDataSet copy = set;
    set.rsubset(L"s") = copy;
    EXPECT_EQ(set.subset(L"s", false), copy);
    EXPECT_EQ(textOf(set), L"n; \n(f,\"\",0,)\n\nn; \n(f,\"\",0,)\n");
}

TEST(ZetMetaDataSet, becomesItsOwnSubset)
{
    ZetMetaDataSet set(L"n", L"d");
    set.rsubset(L"s").rsubset(L"t").rfield(L"f");
    const ZetMetaDataSet& self = set;
    set = self;
    EXPECT_EQ(textOf(set), L"n; d\n\ns; \n\nt; \n(f,\"\",0,)\n");
    set = set.rsubset(L"s");
    EXPECT_EQ(textOf(set), L"s; \n\nt; \n(f,\"\",0,)\n");
    set = set.subsets().begin()->second;
    EXPECT_EQ(textOf(set), L"t; \n(f,\"\",0,)\n");
}

TEST(ZetMetaDataSet, text)
{
    const test::ZetScopedLocale plainNumbers("C");
    ZetMetaDataSet set(L"image", L"a picture");
    EXPECT_EQ(textOf(set), L"image; a picture\n");
    set.rfield(L"width").setValues({640});
    set.rfield(L"bits").setValues({8.0, true});
    set.rsubset(L"sensor").rfield(L"gain").setValues({1.5});
    set.rsubset(L"sensor").rsubset(L"lens").setDescription(L"glass");
    set.rsubset(L"empty");
    EXPECT_EQ(textOf(set),
              L"image; a picture\n"
              L"(width,\"\",1,\"640\")\n"
              L"(bits,\"\",2,\"8.0\",\"true\")\n"
              L"\nsensor; \n"
              L"(gain,\"\",1,\"1.5\")\n"
              L"\nlens; glass\n"
              L"\nempty; \n");

    const ZetMetaDataSet before = set;
    std::wistringstream in(L"other; words\n");
    in >> set;
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(set, before);
}

TEST(ZetMetaDataSet, equality)
{
    ZetMetaDataSet a(L"n", L"d");
    a.rfield(L"f").setValues({1});
    a.rfield(L"g");
    a.rsubset(L"s").rfield(L"h");
    EXPECT_TRUE(a == a);
    EXPECT_TRUE(a == ZetMetaDataSet(a));

    // the order in which items came takes no part
    ZetMetaDataSet b(L"n", L"d");
    b.rsubset(L"s").rfield(L"h");
    b.rfield(L"g");
    b.rfield(L"f").setValues({1});
    EXPECT_TRUE(a == b);
    EXPECT_NE(a.fieldNames(), b.fieldNames());

    b.setDescription(L"");
    EXPECT_FALSE(a == b);
    b.setDescription(L"d");
    b.rfield(L"f").setValues({2});
    EXPECT_FALSE(a == b);
    b.rfield(L"f").setValues({1});
    b.rsubset(L"s").rsubset(L"more");
    EXPECT_TRUE(a != b);
    b.rsubset(L"s").removeSubset(L"more");
    EXPECT_TRUE(a == b);
    b.rfield(L"i");
    EXPECT_FALSE(a == b);

    // names and descriptions alone decide between copies that share their content
    ZetMetaDataSet renamed = a;
    renamed.setName(L"m");
    EXPECT_FALSE(a == renamed);
}

TEST(ZetMetaDataSet, equalityReadsBothSides)
{
    Lazy lazy(makeFields({L"f"}), makeSubsets({L"s"}));
    ZetMetaDataSet filled(L"lazy");
    filled.rfield(L"f").setValues({ZetVariant(L"f")});
    filled.rsubset(L"s");
    EXPECT_TRUE(filled == lazy.set);
    EXPECT_EQ(lazy.reader->fieldReads, 1);
    EXPECT_EQ(lazy.reader->subsetReads, 1);
    EXPECT_TRUE(lazy.set == filled);
    EXPECT_EQ(lazy.reader->fieldReads, 1);

    // both kinds are read before anything is compared
    Lazy different(makeFields({L"g"}), makeSubsets({L"s"}));
    EXPECT_FALSE(filled == different.set);
    EXPECT_EQ(different.reader->fieldReads, 1);
    EXPECT_EQ(different.reader->subsetReads, 1);
    // names alone need no reading
    Lazy named(makeFields({L"f"}));
    EXPECT_FALSE(ZetMetaDataSet(L"n") == named.set);
    EXPECT_EQ(named.reader->fieldReads, 0);

    // shared content is equal without a question
    const Lazy unread(makeFields({L"f"}));
    EXPECT_TRUE(unread.set == ZetMetaDataSet(unread.set));
    EXPECT_EQ(unread.reader->fieldReads, 0);
}

struct QuestionRow
{
    const char* what;
    std::function<void(ZetMetaDataSet&)> ask;
    int fieldReads;
    int subsetReads;
};

const QuestionRow kQuestions[] = {
    {"fields", [](ZetMetaDataSet& s) { EXPECT_EQ(s.fields().size(), 2u); }, 1, 0},
    {"fieldNames",
     [](ZetMetaDataSet& s) {
         EXPECT_EQ(s.fieldNames(), ZetStrList({L"g", L"f"}));
     },
     1, 0},
    {"containsField", [](ZetMetaDataSet& s) { EXPECT_TRUE(s.containsField(L"f")); }, 1, 0},
    {"field", [](ZetMetaDataSet& s) { EXPECT_EQ(s.field(L"f", false).name(), L"f"); }, 1, 0},
    {"own field, recursive", [](ZetMetaDataSet& s) { EXPECT_EQ(s.field(L"f", true).name(), L"f"); }, 1, 0},
    {"no field, recursive", [](ZetMetaDataSet& s) { EXPECT_EQ(s.field(L"x", true).name(), L""); }, 1, 1},
    {"rfield",
     [](ZetMetaDataSet& s) {
         s.rfield(L"x");
         EXPECT_EQ(s.fields().size(), 3u);
     },
     1, 0},
    {"removeField", [](ZetMetaDataSet& s) { EXPECT_EQ(s.removeField(L"f"), 0); }, 1, 0},
    {"subsets", [](ZetMetaDataSet& s) { EXPECT_EQ(s.subsets().size(), 1u); }, 0, 1},
    {"subsetNames", [](ZetMetaDataSet& s) { EXPECT_EQ(s.subsetNames(), ZetStrList({L"s"})); }, 0, 1},
    {"containsSubset", [](ZetMetaDataSet& s) { EXPECT_TRUE(s.containsSubset(L"s")); }, 0, 1},
    {"subset", [](ZetMetaDataSet& s) { EXPECT_EQ(s.subset(L"x", true).name(), L""); }, 0, 1},
    {"rsubset",
     [](ZetMetaDataSet& s) {
         s.rsubset(L"x");
         EXPECT_EQ(s.subsets().size(), 2u);
     },
     0, 1},
    {"removeSubset", [](ZetMetaDataSet& s) { EXPECT_EQ(s.removeSubset(L"s"), 0); }, 0, 1},
    {"readAll", [](ZetMetaDataSet& s) { s.readAll(); }, 0, 1},
    {"text", [](ZetMetaDataSet& s) { textOf(s); }, 1, 1},
    {"name",
     [](ZetMetaDataSet& s) {
         EXPECT_EQ(s.name(), L"lazy");
         s.setDescription(L"d");
     },
     0, 0},
    {"copy", [](ZetMetaDataSet& s) { EXPECT_EQ(ZetMetaDataSet(s).name(), L"lazy"); }, 0, 0},
    {"clear", [](ZetMetaDataSet& s) { s.clear(); }, 0, 0},
};

TEST(ZetMetaDataSet, questionsRunTheReaderOnce)
{
    for (const QuestionRow& row : kQuestions) {
        SCOPED_TRACE(row.what);
        Lazy lazy(makeFields({L"g", L"f"}), makeSubsets({L"s"}));
        row.ask(lazy.set);
        EXPECT_EQ(lazy.reader->fieldReads, row.fieldReads);
        EXPECT_EQ(lazy.reader->subsetReads, row.subsetReads);
        lazy.set.fields();
        lazy.set.fields();
        lazy.set.subsets();
        EXPECT_EQ(lazy.reader->fieldReads, 1);
        EXPECT_EQ(lazy.reader->subsetReads, 1);
    }
}

TEST(ZetMetaDataSet, removingTheLastItemReadNeedsNoSecondReading)
{
    Lazy lazy(makeFields({L"f"}));
    EXPECT_EQ(lazy.set.removeField(L"f"), 0);
    EXPECT_TRUE(lazy.set.fields().empty());
    EXPECT_EQ(lazy.reader->fieldReads, 1);
}

TEST(ZetMetaDataSet, clearReadsAgain)
{
    Lazy lazy(makeFields({L"f"}), makeSubsets({L"s"}));
    lazy.set.rfield(L"own");
    lazy.set.subsets();
    lazy.set.clear();
    EXPECT_EQ(lazy.set.fieldNames(), ZetStrList({L"f"}));
    EXPECT_EQ(lazy.set.subsetNames(), ZetStrList({L"s"}));
    EXPECT_EQ(lazy.reader->fieldReads, 2);
    EXPECT_EQ(lazy.reader->subsetReads, 2);
}

TEST(ZetMetaDataSet, aReaderThatComesLateIsNotAskedForWhatIsThere)
{
    Reader* reader = new Reader(makeFields({L"f"}), makeSubsets({L"s"}));
    const ZetMetaDataReaderPtr keep = reader;
    ZetMetaDataSet set(L"n");
    set.rfield(L"own");
    const ZetMetaDataSet copy = set;
    set.setReader(keep);
    EXPECT_EQ(set.fieldNames(), ZetStrList({L"own"}));
    EXPECT_EQ(set.subsetNames(), ZetStrList({L"s"}));
    EXPECT_EQ(reader->fieldReads, 0);
    EXPECT_EQ(reader->subsetReads, 1);
    // copies made before have none
    EXPECT_TRUE(copy.subsets().empty());
    EXPECT_EQ(reader->subsetReads, 1);

    // taken away, it is not asked
    ZetMetaDataSet other(L"n", L"", keep);
    other.setReader(ZetMetaDataReaderPtr());
    EXPECT_TRUE(other.fields().empty());
    EXPECT_EQ(reader->fieldReads, 0);
}

TEST(ZetMetaDataSet, aReaderThatCannotReadIsAskedLater)
{
    Lazy lazy(makeFields({L"f"}));
    lazy.reader->able = false;
    EXPECT_TRUE(lazy.set.fields().empty());
    EXPECT_EQ(lazy.reader->fieldReads, 0);
    lazy.reader->able = true;
    EXPECT_EQ(lazy.set.fieldNames(), ZetStrList({L"f"}));
}

struct FailureRow
{
    const char* what;
    std::function<ZetTextMsg()> end;
};

const FailureRow kFailures[] = {
    {"a text", [] { return ZetTextMsg(L"went wrong", ZetTextMsg::Error); }},
    {"a thrown message", []() -> ZetTextMsg { throw ZetTextMsg(L"went wrong", ZetTextMsg::Error); }},
    {"a thrown number", []() -> ZetTextMsg { throw 7; }},
};

TEST(ZetMetaDataSet, aFailedReaderIsNotAskedAgain)
{
    for (const FailureRow& row : kFailures) {
        SCOPED_TRACE(row.what);
        Lazy nothing([&row](ZetMetaDataSet*) { return row.end(); });
        EXPECT_TRUE(nothing.set.fields().empty());
        EXPECT_TRUE(nothing.set.fields().empty());
        EXPECT_EQ(nothing.reader->fieldReads, 1);

        // what was stored until then stays
        Lazy some([&row](ZetMetaDataSet* set) {
            set->rfield(L"first");
            return row.end();
        });
        EXPECT_EQ(some.set.fieldNames(), ZetStrList({L"first"}));
        EXPECT_EQ(some.reader->fieldReads, 1);
    }
}

TEST(ZetMetaDataSet, readingReachesCopies)
{
    Lazy lazy(makeFields({L"g", L"f"}), makeSubsets({L"s"}));
    const ZetMetaDataSet copy = lazy.set;
    EXPECT_EQ(lazy.set.fieldNames(), ZetStrList({L"g", L"f"}));
    EXPECT_EQ(copy.fieldNames(), ZetStrList({L"g", L"f"}));
    EXPECT_EQ(copy.field(L"f", false).values()[0].value<ZetString>(), L"f");
    EXPECT_EQ(lazy.reader->fieldReads, 1);

    // the copy was written by its own reading only: each now has content of its own
    EXPECT_EQ(copy.subsetNames(), ZetStrList({L"s"}));
    EXPECT_EQ(lazy.set.subsetNames(), ZetStrList({L"s"}));
    lazy.set.rfield(L"more");
    EXPECT_FALSE(copy.containsField(L"more"));
}

TEST(ZetMetaDataSet, aThrownMessageWithoutTextIsSuccess)
{
    Lazy lazy([](ZetMetaDataSet* set) -> ZetTextMsg {
        set->rfield(L"f");
        throw good();
    });
    const ZetMetaDataSet copy = lazy.set;
    EXPECT_EQ(lazy.set.fieldNames(), ZetStrList({L"f"}));
    EXPECT_EQ(copy.fieldNames(), ZetStrList({L"f"}));
}

TEST(ZetMetaDataSet, aFailedReadingDoesNotReachCopies)
{
    Lazy lazy([](ZetMetaDataSet* set) {
        set->rfield(L"f");
        return ZetTextMsg(L"went wrong", ZetTextMsg::Error);
    });
    const ZetMetaDataSet copy = lazy.set;
    EXPECT_EQ(lazy.set.fieldNames(), ZetStrList({L"f"}));
    EXPECT_TRUE(copy.fieldNames().empty());
    EXPECT_EQ(lazy.reader->fieldReads, 1);
}

TEST(ZetMetaDataSet, writingASharedSetReadsIntoItsOwnContent)
{
    Lazy lazy(makeFields({L"f"}));
    const ZetMetaDataSet copy = lazy.set;
    lazy.set.rfield(L"own");
    EXPECT_EQ(lazy.set.fieldNames(), ZetStrList({L"f", L"own"}));
    EXPECT_EQ(lazy.reader->fieldReads, 1);
    EXPECT_EQ(copy.fieldNames(), ZetStrList({L"f"}));
    EXPECT_EQ(lazy.reader->fieldReads, 2);
}

TEST(ZetMetaDataSet, aReaderMayReplaceTheWholeSet)
{
    // alone, shared, and kept by the reader itself
    for (const int sharers : {0, 1}) {
        ZetMetaDataSet keptByReader;
        Lazy lazy([&](ZetMetaDataSet* set) {
            keptByReader = *set;
            ZetMetaDataSet made(L"made");
            made.rfield(L"f");
            *set = made;
            return good();
        });
        std::vector<ZetMetaDataSet> copies(static_cast<std::size_t>(sharers), lazy.set);
        EXPECT_EQ(lazy.set.fieldNames(), ZetStrList({L"f"}));
        EXPECT_EQ(lazy.set.name(), L"made");
        EXPECT_EQ(keptByReader.fieldNames(), ZetStrList({L"f"}));
        for (const ZetMetaDataSet& copy : copies) {
            EXPECT_EQ(copy.fieldNames(), ZetStrList({L"f"}));
        }
    }
    // nobody but the set itself holds the content that goes
    Lazy alone([](ZetMetaDataSet* set) {
        *set = ZetMetaDataSet(L"made");
        return good();
    });
    EXPECT_TRUE(alone.set.fields().empty());
    EXPECT_EQ(alone.set.name(), L"made");
}

TEST(ZetMetaDataSet, aReaderMayTakeItselfAway)
{
    ZetMetaDataSet set(L"n", L"", new Reader([](ZetMetaDataSet* s) {
                           s->setReader(ZetMetaDataReaderPtr());
                           s->rfield(L"f");
                           return good();
                       }));
    EXPECT_EQ(set.fieldNames(), ZetStrList({L"f"}));
}

TEST(ZetMetaDataSet, readAllReadsSubsetsOnly)
{
    // each set has two subsets, down to the third level
    std::vector<ZetString> asked;
    Reader* reader = nullptr;
    ZetMetaDataReaderPtr keep;
    reader = new Reader(makeFields({L"f"}), [&](ZetMetaDataSet* set) {
        asked.push_back(set->name());
        if (set->name().size() < 3) {
            for (const wchar_t* end : {L"b", L"a"}) {
                set->rsubset(set->name() + end).setReader(keep);
            }
        }
        return good();
    });
    keep = reader;
    ZetMetaDataSet root(L"r", L"", keep);
    root.readAll();
    EXPECT_EQ(asked, (std::vector<ZetString>{L"r", L"ra", L"raa", L"rab", L"rb", L"rba", L"rbb"}));
    EXPECT_EQ(reader->fieldReads, 0);
    EXPECT_EQ(root.subset(L"rba", true).name(), L"rba");
    EXPECT_EQ(asked.size(), 7u);
}

TEST(ZetMetaDataSet, deepTrees)
{
    constexpr int depth = 2000;
    ZetMetaDataSet root(L"0");
    ZetMetaDataSet same(L"0");
    ZetMetaDataSet* innermost = nullptr;
    for (ZetMetaDataSet* set : {&same, &root}) {
        innermost = set;
        for (int i = 1; i <= depth; ++i) {
            innermost = &innermost->rsubset(std::to_wstring(i));
        }
        innermost->rfield(L"f").setDescription(L"found");
    }
    EXPECT_TRUE(root == same);
    EXPECT_EQ(root.field(L"f", true).description(), L"found");
    EXPECT_EQ(root.subset(std::to_wstring(depth), true), *innermost);
    root.readAll();
    EXPECT_GT(textOf(root).size(), 2u * depth);
}

TEST(ZetMetaDataSet, properties)
{
    ZetMetaDataSet set(L"n", L"d");
    const ZetMetaObjectPtr meta = set.metaObject();
    meta->properties();
    EXPECT_EQ(meta->setPropertyValue(L"name", ZetVariant(L"m")), 0);
    EXPECT_EQ(meta->setPropertyValue(L"description", ZetVariant(L"e")), 0);
    EXPECT_EQ(set, ZetMetaDataSet(L"m", L"e"));
}

ZetVariantList listOf(const ZetMetaDataSet& set, const ZetString& property)
{
    set.metaObject()->properties();
    ZetVariant value;
    EXPECT_EQ(set.metaObject()->getPropertyValue(property, value), 0);
    return value.value<ZetVariantList>();
}

TEST(ZetMetaDataSet, itemsAsProperties)
{
    Lazy lazy(makeFields({L"g", L"f", L"gone"}), makeSubsets({L"t", L"s"}));
    lazy.set.rfield(L"g").setDescription(L"kept");
    lazy.set.removeField(L"gone");
    lazy.set.rfield(L"gone");
    lazy.set.removeField(L"gone");
    lazy.set.removeField(L"f");
    lazy.set.rfield(L"f");

    // in the order in which they came, each once
    const ZetVariantList fields = listOf(lazy.set, L"fields");
    ASSERT_EQ(fields.size(), 2u);
    EXPECT_EQ(fields[0].typeName(), L"ZetMetaDataField");
    EXPECT_EQ(fields[0].value<ZetMetaDataField>(), lazy.set.field(L"g", false));
    EXPECT_EQ(fields[1].value<ZetMetaDataField>(), lazy.set.field(L"f", false));
    const ZetVariantList subsets = listOf(lazy.set, L"subsets");
    ASSERT_EQ(subsets.size(), 2u);
    EXPECT_EQ(subsets[0].typeName(), L"ZetMetaDataSet");
    EXPECT_EQ(subsets[0].value<ZetMetaDataSet>().name(), L"t");
    EXPECT_EQ(lazy.reader->subsetReads, 1);

    Lazy other(makeFields({L"x"}), makeSubsets({L"y"}));
    const ZetMetaDataSet copy = other.set;
    EXPECT_EQ(other.set.metaObject()->setPropertyValue(L"fields", ZetVariant(fields)), 0);
    EXPECT_EQ(other.set.metaObject()->setPropertyValue(L"subsets", ZetVariant(subsets)), 0);
    EXPECT_EQ(other.set, lazy.set);
    EXPECT_EQ(other.set.fieldNames(), ZetStrList({L"g", L"f"}));
    EXPECT_EQ(other.set.subsetNames(), ZetStrList({L"t", L"s"}));
    EXPECT_EQ(other.reader->fieldReads, 0);
    EXPECT_EQ(copy.fieldNames(), ZetStrList({L"x"}));

    // replaced by nothing, and the reader is not asked
    Lazy emptied(makeFields({L"x"}));
    EXPECT_EQ(emptied.set.metaObject()->setPropertyValue(L"fields", ZetVariant(ZetVariantList())), 0);
    EXPECT_TRUE(emptied.set.fields().empty());
    EXPECT_EQ(emptied.reader->fieldReads, 0);
}

TEST(ZetMetaDataSet, itemsWithoutNameGetOne)
{
    ZetMetaDataSet set(L"n");
    set.metaObject()->properties();
    // what is no field arrives as a default one
    EXPECT_EQ(set.metaObject()->setPropertyValue(L"fields", ZetVariant(ZetVariantList{3})), 0);
    EXPECT_EQ(set.fieldNames(), ZetStrList({L"field"}));
    EXPECT_EQ(set.field(L"field", false), ZetMetaDataField(L"field"));
}

TEST(ZetMetaDataSet, becomesAPartOfItselfThroughAProperty)
{
    ZetMetaDataSet set(L"n");
    set.rfield(L"f");
    set.metaObject()->properties();
    const ZetVariant self(ZetMetaType::of<ZetMetaDataSet>(), &set);
    EXPECT_EQ(set.metaObject()->setPropertyValue(L"subsets", ZetVariant(ZetVariantList{self})), 0);
    EXPECT_EQ(textOf(set), L"n; \n(f,\"\",0,)\n\nn; \n(f,\"\",0,)\n");
}

TEST(ZetMetaDataSet, travelsInVariants)
{
    const test::ZetScopedLocale plainNumbers("C");
    ZetMetaDataSet set(L"n", L"d");
    set.rfield(L"f").setValues({3.0});
    const ZetVariant variant(ZetMetaType::of<ZetMetaDataSet>(), &set);
    EXPECT_EQ(variant.typeName(), L"ZetMetaDataSet");
    EXPECT_EQ(variant.value<ZetMetaDataSet>(), set);
    EXPECT_EQ(variant.value<ZetString>(), L"n; d\n(f,\"\",1,\"3.0\")\n");
    const ZetVariantIFPtr clone = variant.implementation()->clone();
    EXPECT_TRUE(clone->isEqual(variant.implementation().get()));
    const ZetString text = L"n; d\n";
    EXPECT_FALSE(clone->convertFrom(typeID<ZetString>(), &text));
    EXPECT_EQ(ZetVariant(text).value<ZetMetaDataSet>(), ZetMetaDataSet());
    int number = 7;
    EXPECT_FALSE(variant.convertTo(&number));
    EXPECT_EQ(number, 7);

    // the last two kinds to register
    EXPECT_EQ(ZetMetaType::of<ZetMetaDataField>().type(), 1029);
    EXPECT_EQ(ZetMetaType::of<ZetMetaDataSet>().type(), 1030);
}

TEST(ZetMetaDataReader, isNamed)
{
    EXPECT_EQ(Reader(Reader::Answer()).className(), L"ZetMetaDataReader");
}

}  // namespace
}  // namespace zet
