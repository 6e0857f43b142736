#include <zet/ZetBuffer>

#include <cstdlib>
#include <cstring>
#include <new>
#include <sstream>

#include <gtest/gtest.h>

#include "image/ZetBlockMemory"
#include "support/ZetCollectingHandler"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

/// What a buffer says of itself, in one comparable line.
struct State
{
    bool hasBlock;
    bool ownsMemory;
    bool isExternal;
    bool allocationFailed;
    unsigned long size;

    bool operator==(const State&) const = default;
};

std::ostream& operator<<(std::ostream& out, const State& state)
{
    return out << (state.hasBlock ? "block " : "no block ") << (state.ownsMemory ? "own " : "not own ")
               << (state.isExternal ? "external " : "internal ") << (state.allocationFailed ? "failed " : "fine ")
               << state.size;
}

State stateOf(const ZetBuffer& buffer)
{
    EXPECT_TRUE(buffer.isValid());
    return {buffer.data() != nullptr, buffer.ownsMemory(), buffer.isExternal(), buffer.allocationFailed(),
            buffer.size()};
}

std::string textOf(const ZetBuffer& buffer)
{
    const char* data = static_cast<const char*>(buffer.data());
    return std::string(data, data + buffer.size());
}

void write(ZetBuffer& buffer, const char* text)
{
    std::memcpy(buffer.data(), text, buffer.size());
}

/// While it lives, blocks come from another source.
class BlockSource
{
public:
    explicit BlockSource(void* (*source)(std::size_t)) : m_before(internal::acquireBlock)
    {
        internal::acquireBlock = source;
    }
    BlockSource(const BlockSource&) = delete;
    BlockSource& operator=(const BlockSource&) = delete;
    ~BlockSource() { internal::acquireBlock = m_before; }

private:
    void* (*m_before)(std::size_t);
};

void* noBlock(std::size_t)
{
    return nullptr;
}

void* badAlloc(std::size_t)
{
    throw std::bad_alloc();
}

void* oddThrow(std::size_t)
{
    throw 5;
}

TEST(ZetBuffer, construction)
{
    char memory[4] = "abc";
    void* const block = std::malloc(4);
    EXPECT_EQ(stateOf(ZetBuffer(4, false)), (State{false, true, false, false, 4}));
    EXPECT_EQ(stateOf(ZetBuffer(4, true)), (State{true, true, false, false, 4}));
    EXPECT_EQ(stateOf(ZetBuffer(4, memory, false)), (State{true, false, true, false, 4}));
    EXPECT_EQ(stateOf(ZetBuffer(4, block, true)), (State{true, true, true, false, 4}));
    EXPECT_EQ(stateOf(ZetBuffer(4, nullptr, false)), (State{false, true, false, false, 4}));
    EXPECT_EQ(stateOf(ZetBuffer(4, nullptr, true)), (State{false, true, false, false, 4}));
    EXPECT_STREQ(memory, "abc");
    EXPECT_EQ(ZetBuffer(0, false).className(), L"ZetBuffer");
    EXPECT_EQ(ZetBuffer(0, false).dataType(), ZetDataType());
    EXPECT_EQ(ZetBuffer(0, false).mutex().lock(), 0);
}

TEST(ZetBuffer, sizeZeroAllocatesNothing)
{
    const test::ZetCollectingHandler posted;
    ZetBuffer empty(0, true);
    EXPECT_EQ(stateOf(empty), (State{false, true, false, false, 0}));
    EXPECT_EQ(empty.allocate(), nullptr);
    EXPECT_FALSE(empty.deallocate());
    EXPECT_TRUE(empty == ZetBuffer(0, false));
    EXPECT_TRUE(posted.messages().empty());
}

TEST(ZetBuffer, allocateKeepsABlock)
{
    char memory[4] = "abc";
    ZetBuffer own(4, true);
    void* const block = own.data();
    EXPECT_EQ(own.allocate(), block);
    ZetBuffer external(4, memory, false);
    EXPECT_EQ(external.allocate(), memory);
    EXPECT_EQ(stateOf(external), (State{true, false, true, false, 4}));
}

TEST(ZetBuffer, deallocate)
{
    char memory[4] = "abc";
    ZetBuffer external(4, memory, false);
    external.setDataType(ZetDataType::U8);
    EXPECT_FALSE(external.deallocate());
    EXPECT_STREQ(memory, "abc");
    EXPECT_EQ(stateOf(external), (State{false, true, false, false, 4}));
    EXPECT_EQ(external.dataType(), ZetDataType());

    ZetBuffer own(4, true);
    EXPECT_TRUE(own.deallocate());
    EXPECT_FALSE(own.deallocate());
    EXPECT_EQ(stateOf(own), (State{false, true, false, false, 4}));
    EXPECT_NE(own.allocate(), nullptr);

    ZetBuffer adopted(4, std::malloc(4), true);
    EXPECT_TRUE(adopted.deallocate());
}

struct FailureRow
{
    void* (*source)(std::size_t);
    const wchar_t* text;
};

const FailureRow kFailures[] = {
    {&noBlock, L"Cannot allocate '77' bytes for buffer."},
    {&badAlloc, L"Caught a bad memory allocation exception. Cannot allocate '77' bytes for buffer."},
    {&oddThrow, L"Caught an unknown exception. Cannot allocate '77' bytes for buffer."},
};

TEST(ZetBuffer, failedAllocation)
{
    for (const FailureRow& row : kFailures) {
        const BlockSource source(row.source);
        ZetBuffer buffer(77, false);

        const ZetTextMsg thrown = test::thrownBy([&] { buffer.allocate(); });
        EXPECT_EQ(thrown.text(), row.text);
        EXPECT_EQ(thrown.file(), L"ZetBuffer");
        EXPECT_EQ(thrown.kind(), ZetTextMsg::Error);
        EXPECT_EQ(stateOf(buffer), (State{false, true, false, true, 77}));

        const test::ZetCollectingHandler posted;
        EXPECT_EQ(buffer.allocate(), nullptr);
        EXPECT_EQ(posted.texts(), std::vector<ZetString>{row.text});
        EXPECT_EQ(stateOf(buffer), (State{false, true, false, true, 77}));
        EXPECT_EQ(stateOf(ZetBuffer(77, true)), (State{false, true, false, true, 77}));
    }
}

TEST(ZetBuffer, allocationSucceedsAfterAFailure)
{
    ZetBuffer buffer(4, false);
    {
        const BlockSource source(&noBlock);
        const test::ZetCollectingHandler posted;
        buffer.allocate();
    }
    EXPECT_NE(buffer.allocate(), nullptr);
    EXPECT_EQ(stateOf(buffer), (State{true, true, false, false, 4}));
}

TEST(ZetBuffer, reallocateWithPreserve)
{
    // a block of its own grows and shrinks
    ZetBuffer own(4, true);
    own.setDataType(ZetDataType::U8);
    write(own, "abcd");
    const void* const longer = own.reallocate(6, true);
    EXPECT_EQ(own.data(), longer);
    EXPECT_EQ(stateOf(own), (State{true, true, false, false, 6}));
    EXPECT_EQ(textOf(own).substr(0, 4), "abcd");
    own.reallocate(2, true);
    EXPECT_EQ(textOf(own), "ab");
    EXPECT_EQ(own.dataType(), ZetDataType(ZetDataType::U8));

    // a caller's block is copied and left alone
    char memory[5] = "abcd";
    ZetBuffer external(4, memory, false);
    void* const copy = external.reallocate(3, true);
    EXPECT_NE(copy, memory);
    EXPECT_EQ(textOf(external), "abc");
    EXPECT_EQ(stateOf(external), (State{true, true, false, false, 3}));
    EXPECT_STREQ(memory, "abcd");

    // one that was handed over is copied and freed
    ZetBuffer adopted(2, std::malloc(2), true);
    write(adopted, "xy");
    adopted.reallocate(2, true);
    EXPECT_EQ(textOf(adopted), "xy");
    EXPECT_EQ(stateOf(adopted), (State{true, true, false, false, 2}));
}

TEST(ZetBuffer, reallocateToNothing)
{
    ZetBuffer own(4, true);
    EXPECT_EQ(own.reallocate(0, true), nullptr);
    EXPECT_EQ(stateOf(own), (State{false, true, false, false, 0}));
    char memory[4] = "abc";
    ZetBuffer external(4, memory, false);
    EXPECT_NE(external.reallocate(0, true), nullptr);
    EXPECT_EQ(stateOf(external), (State{true, true, false, false, 0}));
}

TEST(ZetBuffer, reallocateWithoutPreserve)
{
    ZetBuffer buffer(4, true);
    buffer.setDataType(ZetDataType::U8);
    EXPECT_EQ(buffer.reallocate(8, false), nullptr);
    EXPECT_EQ(stateOf(buffer), (State{false, true, false, false, 8}));
    EXPECT_EQ(buffer.dataType(), ZetDataType(ZetDataType::U8));
    // there is no block now, so the next call allocates, with preserve or without
    EXPECT_NE(buffer.reallocate(8, false), nullptr);
    EXPECT_EQ(stateOf(buffer), (State{true, true, false, false, 8}));
    EXPECT_EQ(buffer.dataType(), ZetDataType(ZetDataType::U8));
    ZetBuffer other(4, false);
    EXPECT_NE(other.reallocate(5, true), nullptr);
    EXPECT_EQ(stateOf(other), (State{true, true, false, false, 5}));
}

TEST(ZetBuffer, reallocateWithoutMemory)
{
    char memory[4] = "abc";
    ZetBuffer external(4, memory, false);
    const BlockSource source(&noBlock);
    const test::ZetCollectingHandler posted;
    EXPECT_EQ(external.reallocate(8, true), nullptr);
    EXPECT_EQ(stateOf(external), (State{false, true, false, false, 8}));
    EXPECT_STREQ(memory, "abc");
    // nothing is tested there, so nothing is posted
    EXPECT_TRUE(posted.messages().empty());
    ZetBuffer none(4, false);
    EXPECT_EQ(none.reallocate(8, false), nullptr);
    EXPECT_EQ(posted.messages().size(), 1u);
}

TEST(ZetBuffer, copyIsDeepAndOwned)
{
    char memory[4] = "abc";
    ZetBuffer external(4, memory, false);
    external.setDataType(ZetDataType::U8);
    const ZetBuffer copy(external);
    EXPECT_EQ(stateOf(copy), (State{true, true, false, false, 4}));
    EXPECT_NE(copy.data(), static_cast<const void*>(memory));
    EXPECT_EQ(copy.dataType(), ZetDataType(ZetDataType::U8));
    EXPECT_TRUE(copy == external);
    memory[0] = 'x';
    EXPECT_FALSE(copy == external);
    EXPECT_EQ(stateOf(ZetBuffer(ZetBuffer(4, false))), (State{false, true, false, false, 4}));
}

TEST(ZetBuffer, assignment)
{
    ZetBuffer source(3, true);
    source.setDataType(ZetDataType::I8);
    write(source, "abc");

    // another size: a new block
    ZetBuffer target(5, true);
    target = source;
    EXPECT_EQ(textOf(target), "abc");
    EXPECT_EQ(target.dataType(), ZetDataType(ZetDataType::I8));
    EXPECT_EQ(stateOf(target), (State{true, true, false, false, 3}));

    // the same size: the block stays, also a caller's
    char memory[4] = "xyz";
    ZetBuffer external(3, memory, false);
    external = source;
    EXPECT_STREQ(memory, "abc");
    EXPECT_EQ(stateOf(external), (State{true, false, true, false, 3}));

    // without a block there, nothing is allocated and an old block of the size keeps its bytes
    target = ZetBuffer(3, false);
    EXPECT_EQ(textOf(target), "abc");
    EXPECT_EQ(target.dataType(), ZetDataType());
    ZetBuffer other(5, true);
    other = ZetBuffer(3, false);
    EXPECT_EQ(stateOf(other), (State{false, true, false, false, 3}));

    // a source of size 0 empties
    target.setDataType(ZetDataType::I8);
    target = ZetBuffer(0, true);
    EXPECT_EQ(stateOf(target), (State{false, true, false, false, 0}));
    EXPECT_EQ(target.dataType(), ZetDataType());

    ZetBuffer& self = source;
    source = self;
    EXPECT_EQ(textOf(source), "abc");
    EXPECT_EQ(source.dataType(), ZetDataType(ZetDataType::I8));
}

TEST(ZetBuffer, assignmentWithoutMemory)
{
    ZetBuffer source(3, true);
    source.setDataType(ZetDataType::I8);
    write(source, "abc");
    const BlockSource blocks(&noBlock);
    ZetBuffer target(5, false);
    EXPECT_EQ(test::thrownBy([&] { target = source; }).text(), L"Cannot allocate '3' bytes for buffer.");
    EXPECT_EQ(stateOf(target), (State{false, true, false, true, 3}));
    EXPECT_EQ(target.dataType(), ZetDataType());
    const test::ZetCollectingHandler posted;
    target = source;
    EXPECT_EQ(posted.messages().size(), 1u);
    EXPECT_EQ(stateOf(target), (State{false, true, false, true, 3}));
    EXPECT_EQ(target.dataType(), ZetDataType(ZetDataType::I8));
}

TEST(ZetBuffer, equality)
{
    ZetBuffer a(3, true);
    ZetBuffer b(3, true);
    write(a, "abc");
    write(b, "abc");
    b.setDataType(ZetDataType::I8);
    EXPECT_TRUE(a == b);
    write(b, "abd");
    EXPECT_TRUE(a != b);
    EXPECT_FALSE(a == ZetBuffer(3, false));
    EXPECT_FALSE(ZetBuffer(3, false) == a);
    EXPECT_TRUE(ZetBuffer(3, false) == ZetBuffer(3, false));
    EXPECT_FALSE(ZetBuffer(3, false) == ZetBuffer(4, false));
}

TEST(ZetBuffer, isSharedThroughPointers)
{
    ZetBufferPtr first(new ZetBuffer(3, true));
    EXPECT_TRUE(first.isUnique());
    {
        const ZetBufferConstPtr second(first);
        EXPECT_EQ(second.get(), first.get());
        EXPECT_FALSE(first.isUnique());
    }
    EXPECT_TRUE(first.isUnique());
    EXPECT_FALSE(ZetBufferPtr().isUnique());
}

TEST(ZetBufferPtr, textIsTheAddress)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ZetBufferPtr buffer(new ZetBuffer(3, true));
    std::wostringstream out;
    out << ZetBufferPtr() << L" " << buffer;
    std::wostringstream expected;
    expected << L"0x00000000 0x" << std::hex << reinterpret_cast<std::uintptr_t>(buffer.get());
    EXPECT_EQ(out.str(), expected.str());

    std::wistringstream in(L"0x12345678");
    ZetBufferPtr read(buffer);
    in >> read;
    EXPECT_EQ(read, buffer);
    EXPECT_FALSE(in.fail());
    EXPECT_EQ(in.tellg(), std::wistringstream::pos_type(0));
}

}  // namespace
}  // namespace zet
