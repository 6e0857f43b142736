#include <zet/ZetLutDesc>

#include <cstring>
#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetMetaProperties>
#include <zet/ZetVariant>

namespace zet {
namespace {

ZetBufferPtr bufferOf(const char* text)
{
    const ZetBufferPtr buffer = new ZetBuffer(std::strlen(text), true);
    std::memcpy(buffer->data(), text, buffer->size());
    return buffer;
}

ZetLutDesc tableOf(const ZetBufferPtr& buffer)
{
    return ZetLutDesc(buffer, ZetDataType(ZetDataType::U8), 3, -1, 2, false);
}

TEST(ZetLutDesc, construction)
{
    const ZetLutDesc empty;
    EXPECT_EQ(empty.className(), L"ZetLutDesc");
    EXPECT_TRUE(empty.reuseLutDataForAllBands());
    EXPECT_EQ(empty.numEntriesPerBand(), 0u);
    EXPECT_EQ(empty.numBands(), 0u);
    EXPECT_EQ(empty.minIndex(), 0);
    EXPECT_FALSE(empty.buffer().booleanTest());
    EXPECT_EQ(empty.dataType().type(), ZetDataType::Invalid);

    const ZetBufferPtr buffer = bufferOf("abcdef");
    ZetLutDesc table = tableOf(buffer);
    EXPECT_FALSE(table.reuseLutDataForAllBands());
    EXPECT_EQ(table.numEntriesPerBand(), 3u);
    EXPECT_EQ(table.numBands(), 2u);
    EXPECT_EQ(table.minIndex(), -1);
    EXPECT_EQ(table.buffer(), buffer);
    EXPECT_EQ(table.dataType().type(), ZetDataType::U8);
    // values are not checked
    EXPECT_EQ(ZetLutDesc(buffer, ZetDataType(), 1000, 0, 7, true).numBands(), 7u);
}

TEST(ZetLutDesc, copiesShareAndClonesDoNot)
{
    ZetLutDesc table = tableOf(bufferOf("abcdef"));
    const ZetLutDesc copy(table);
    ZetLutDesc assigned;
    assigned = table;
    assigned = *&assigned;
    const ZetLutDescPtr clone = table.clone();
    EXPECT_EQ(*clone, table);
    EXPECT_NE(clone->buffer(), table.buffer());

    static_cast<char*>(table.buffer()->data())[0] = 'x';
    EXPECT_EQ(copy, table);
    EXPECT_EQ(assigned, table);
    EXPECT_EQ(assigned.buffer(), table.buffer());
    EXPECT_NE(*clone, table);

    const ZetLutDescPtr bare = ZetLutDesc().clone();
    EXPECT_EQ(*bare, ZetLutDesc());
    EXPECT_FALSE(bare->buffer().booleanTest());
}

TEST(ZetLutDesc, equality)
{
    const ZetDataType u8(ZetDataType::U8);
    const ZetLutDesc table = tableOf(bufferOf("abcdef"));
    EXPECT_EQ(ZetLutDesc(), ZetLutDesc());
    EXPECT_EQ(table, tableOf(bufferOf("abcdef")));
    EXPECT_NE(table, tableOf(bufferOf("abcdeg")));
    EXPECT_NE(table, tableOf(ZetBufferPtr()));
    EXPECT_NE(tableOf(ZetBufferPtr()), table);
    EXPECT_EQ(tableOf(ZetBufferPtr()), tableOf(ZetBufferPtr()));
    const ZetBufferPtr buffer = bufferOf("abcdef");
    EXPECT_NE(table, ZetLutDesc(buffer, u8, 3, -1, 2, true));
    EXPECT_NE(table, ZetLutDesc(buffer, u8, 4, -1, 2, false));
    EXPECT_NE(table, ZetLutDesc(buffer, u8, 3, 0, 2, false));
    EXPECT_NE(table, ZetLutDesc(buffer, u8, 3, -1, 3, false));
    EXPECT_NE(table, ZetLutDesc(buffer, ZetDataType(ZetDataType::U8, 7), 3, -1, 2, false));
    EXPECT_NE(table, ZetLutDesc(buffer, ZetDataType(ZetDataType::I8), 3, -1, 2, false));
}

TEST(ZetLutDesc, properties)
{
    ZetLutDesc table;
    const ZetMetaObjectPtr meta = table.metaObject();
    meta->properties();

    const ZetBufferPtr buffer = bufferOf("abcdef");
    ZetVariant value(7);
    EXPECT_EQ(meta->setPropertyValue(L"data", ZetVariant(buffer)), 0);
    // without a type the buffer is not handed out
    EXPECT_EQ(meta->getPropertyValue(L"data", value), 0);
    EXPECT_EQ(value.value<int>(), 7);

    EXPECT_EQ(meta->setPropertyValue(L"datatype", ZetVariant(ZetDataType(ZetDataType::U8))), 0);
    EXPECT_EQ(meta->setPropertyValue(L"reuseLutDataForAllBands", ZetVariant(L"no")), 0);
    EXPECT_EQ(meta->setPropertyValue(L"numEntriesPerBand", ZetVariant(3)), 0);
    EXPECT_EQ(meta->setPropertyValue(L"numBands", ZetVariant(2)), 0);
    EXPECT_EQ(meta->setPropertyValue(L"minIndex", ZetVariant(-1)), 0);
    EXPECT_EQ(table, tableOf(bufferOf("abcdef")));

    // with one, it is told to the buffer
    EXPECT_EQ(buffer->dataType().type(), ZetDataType::Invalid);
    EXPECT_EQ(meta->getPropertyValue(L"data", value), 0);
    EXPECT_EQ(value.value<ZetBufferPtr>(), buffer);
    EXPECT_EQ(buffer->dataType().type(), ZetDataType::U8);

    EXPECT_EQ(meta->setPropertyValue(L"data", ZetVariant(ZetBufferPtr())), 0);
    EXPECT_EQ(meta->getPropertyValue(L"data", value), 0);
    EXPECT_FALSE(value.value<ZetBufferPtr>().booleanTest());
}

TEST(ZetLutDesc, hasNoTextForm)
{
    ZetLutDesc table;
    std::wostringstream out;
    out << table;
    EXPECT_TRUE(out.fail());
    std::wistringstream in(L"1");
    in >> table;
    EXPECT_TRUE(in.fail());
}

}  // namespace
}  // namespace zet
