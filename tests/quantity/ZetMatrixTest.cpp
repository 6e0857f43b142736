#include <zet/ZetMatrix>

#include <limits>
#include <new>
#include <sstream>
#include <utility>

#include <zet/ZetMetaObject>

#include "quantity/ZetMatrixSupport"
#include "quantity/ZetMatrix_p"

namespace zet {
namespace {

using test::expectPost;
using test::matrixOf;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

const wchar_t* const kCountsDiffer = L"Matrix dimensions must match.";
const wchar_t* const kDoesNotFit = L"Number of rows for this must match number of columns in B.";

/// Lets the memory of matrices come from elsewhere while it lives.
class ElementSource
{
public:
    explicit ElementSource(double* (*source)(std::size_t)) : m_before(internal::acquireElements)
    {
        internal::acquireElements = source;
    }
    ElementSource(const ElementSource&) = delete;
    ElementSource& operator=(const ElementSource&) = delete;
    ~ElementSource() { internal::acquireElements = m_before; }

private:
    double* (*m_before)(std::size_t);
};

std::size_t s_askedFor = 0;

double* noElements(std::size_t count)
{
    s_askedFor = count;
    throw std::bad_alloc();
}

void expectCounts(const ZetMatrix& matrix, int rows, int columns)
{
    EXPECT_EQ(matrix.rowCount(), rows);
    EXPECT_EQ(matrix.columnCount(), columns);
}

void expectEmpty(const ZetMatrix& matrix, int rows = 0, int columns = 0)
{
    EXPECT_TRUE(matrix.isEmpty());
    EXPECT_EQ(matrix.data(), nullptr);
    EXPECT_EQ(matrix.elementCount(), 0u);
    expectCounts(matrix, rows, columns);
}

TEST(ZetMatrix, isAnObjectWithoutProperties)
{
    EXPECT_EQ(ZetMatrix().className(), L"ZetMatrix");
    EXPECT_FALSE(ZetMatrix().isMetaObject());
    EXPECT_EQ(ZetMatrix::RowMajor, 0);
    EXPECT_EQ(ZetMatrix::ColumnMajor, 1);
}

TEST(ZetMatrix, filled)
{
    const ZetMatrix matrix(2, 3, 7.5);
    EXPECT_FALSE(matrix.isEmpty());
    expectCounts(matrix, 2, 3);
    EXPECT_EQ(matrix, matrixOf(2, 3, {7.5, 7.5, 7.5, 7.5, 7.5, 7.5}));
    expectEmpty(ZetMatrix());
}

TEST(ZetMatrix, emptyKeepsItsCounts)
{
    expectEmpty(ZetMatrix(3, 0, 1.0), 3, 0);
    expectEmpty(ZetMatrix(0, 3, 1.0), 0, 3);
    expectEmpty(ZetMatrix(0, 0, 1.0));
    expectEmpty(ZetMatrix(ZetMatrix(3, 0, 1.0)), 3, 0);
}

TEST(ZetMatrix, elementsStandRowAfterRow)
{
    ZetMatrix matrix = matrixOf(2, 3, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(matrix(0, 2), 3.0);
    EXPECT_EQ(matrix(1, 0), 4.0);
    EXPECT_EQ(matrix.data()[1 * 3 + 2], 6.0);
    matrix(1, 2) = 9.0;
    EXPECT_EQ(std::as_const(matrix)(1, 2), 9.0);
    EXPECT_EQ(matrix.data()[5], 9.0);
}

TEST(ZetMatrix, orderOfAnArray)
{
    const double data[] = {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(ZetMatrix(2, 3, data, ZetMatrix::RowMajor), matrixOf(2, 3, {1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(ZetMatrix(2, 3, data, ZetMatrix::ColumnMajor), matrixOf(2, 3, {1, 3, 5, 2, 4, 6}));
    const std::vector<double> vector(data, data + 6);
    EXPECT_EQ(ZetMatrix(3, 2, vector, ZetMatrix::ColumnMajor), matrixOf(3, 2, {1, 4, 2, 5, 3, 6}));
    const test::ZetCollectingHandler posted;
    expectEmpty(ZetMatrix(2, 2, vector, ZetMatrix::RowMajor));
    expectEmpty(ZetMatrix(4, 2, vector, ZetMatrix::RowMajor));
    expectEmpty(ZetMatrix(2, 0, std::vector<double>(), ZetMatrix::RowMajor));
    expectEmpty(ZetMatrix(2, 3, nullptr, ZetMatrix::RowMajor));
    EXPECT_TRUE(posted.messages().empty());
}

TEST(ZetMatrix, initialize)
{
    const double data[] = {1, 2, 3, 4};
    ZetMatrix matrix = matrixOf(1, 2, {8, 9});
    EXPECT_EQ(matrix.initialize(2, 2, nullptr, ZetMatrix::RowMajor), 1);
    EXPECT_EQ(matrix.initialize(0, 2, data, ZetMatrix::RowMajor), 1);
    EXPECT_EQ(matrix.initialize(2, 0, data, ZetMatrix::ColumnMajor), 1);
    EXPECT_EQ(matrix.initialize(2, 2, data, static_cast<ZetMatrix::ZetArrayOrder>(2)), 1);
    EXPECT_EQ(matrix.initialize(2, 2, data, static_cast<ZetMatrix::ZetArrayOrder>(-1)), 1);
    EXPECT_EQ(matrix, matrixOf(1, 2, {8, 9}));
    EXPECT_EQ(matrix.initialize(2, 2, data, ZetMatrix::ColumnMajor), 0);
    EXPECT_EQ(matrix, matrixOf(2, 2, {1, 3, 2, 4}));
    EXPECT_EQ(matrix.initialize(2, 1, matrix.data() + 1, ZetMatrix::RowMajor), 0);
    EXPECT_EQ(matrix, matrixOf(2, 1, {3, 2}));
}

TEST(ZetMatrix, withoutMemory)
{
    const double data[] = {1, 2, 3, 4};
    ZetMatrix matrix = matrixOf(1, 2, {8, 9});
    const ZetMatrix column(2, 1, 1.0);
    const test::ZetCollectingHandler posted;
    const ElementSource none(noElements);
    expectEmpty(ZetMatrix(2, 2, 1.0));
    EXPECT_EQ(matrix.initialize(2, 2, data, ZetMatrix::RowMajor), 1);
    expectCounts(matrix, 1, 2);
    EXPECT_EQ(matrix(0, 1), 9.0);
    EXPECT_THROW(ZetMatrix{matrix}, std::bad_alloc);
    EXPECT_THROW(matrix * column, std::bad_alloc);
    std::wistringstream file(L"CMF 1 {rows = 2 columns = 2} 1 2 3 4 $");
    EXPECT_THROW(file >> matrix, std::bad_alloc);
    expectCounts(matrix, 1, 2);
    EXPECT_EQ(matrix(0, 1), 9.0);
    EXPECT_TRUE(posted.messages().empty());
}

TEST(ZetMatrix, countsMultiplyIn64Bits)
{
    const ElementSource none(noElements);
    expectEmpty(ZetMatrix(65535, 65535, 1.0));
    EXPECT_EQ(s_askedFor, 4294836225u);
    const double one = 1.0;
    EXPECT_EQ(ZetMatrix().initialize(65535, 65534, &one, ZetMatrix::RowMajor), 1);
    EXPECT_EQ(s_askedFor, 4294770690u);
}

TEST(ZetMatrix, assignment)
{
    ZetMatrix matrix = matrixOf(2, 3, {1, 2, 3, 4, 5, 6});
    const double* const block = matrix.data();
    const ZetMatrix& itself = matrix;
    matrix = itself;
    EXPECT_EQ(matrix.data(), block);
    EXPECT_EQ(matrix, matrixOf(2, 3, {1, 2, 3, 4, 5, 6}));
    // as many elements, so the block stays, whatever the counts
    matrix = matrixOf(3, 2, {6, 5, 4, 3, 2, 1});
    EXPECT_EQ(matrix.data(), block);
    EXPECT_EQ(matrix, matrixOf(3, 2, {6, 5, 4, 3, 2, 1}));
    matrix = matrixOf(1, 1, {5});
    EXPECT_EQ(matrix, matrixOf(1, 1, {5}));
    matrix = ZetMatrix(0, 4, 1.0);
    expectEmpty(matrix, 0, 4);
    matrix = ZetMatrix(2, 1, 3.0);
    EXPECT_EQ(matrix, matrixOf(2, 1, {3, 3}));
}

TEST(ZetMatrix, copiesAreDeepAndMovesEmpty)
{
    ZetMatrix matrix = matrixOf(1, 2, {1, 2});
    ZetMatrix copy = matrix;
    copy(0, 0) = 5.0;
    EXPECT_EQ(matrix(0, 0), 1.0);
    const ZetMatrix moved = std::move(matrix);
    EXPECT_EQ(moved, matrixOf(1, 2, {1, 2}));
    expectEmpty(matrix);  // NOLINT(bugprone-use-after-move): that is what is asked
}

TEST(ZetMatrix, fillsOnlyWhatIsThere)
{
    ZetMatrix matrix(2, 2, 1.0);
    matrix = 4.5;
    EXPECT_EQ(matrix, ZetMatrix(2, 2, 4.5));
    ZetMatrix empty(3, 0, 1.0);
    expectPost(L"Matrix is empty", [&] { empty = 4.5; });
    expectEmpty(empty, 3, 0);
}

TEST(ZetMatrix, numbersElementByElement)
{
    const ZetMatrix matrix = matrixOf(1, 3, {1, -2, 0.5});
    EXPECT_EQ(matrix + 2.0, matrixOf(1, 3, {3, 0, 2.5}));
    EXPECT_EQ(matrix - 2.0, matrixOf(1, 3, {-1, -4, -1.5}));
    EXPECT_EQ(matrix * 2.0, matrixOf(1, 3, {2, -4, 1}));
    ZetMatrix changed = matrix;
    EXPECT_EQ(&(changed += 2.0), &changed);
    EXPECT_EQ(&(changed -= 1.0), &changed);
    EXPECT_EQ(&(changed *= 3.0), &changed);
    EXPECT_EQ(changed, matrixOf(1, 3, {6, -3, 4.5}));

    const test::ZetCollectingHandler posted;
    ZetMatrix empty(0, 2, 0.0);
    empty += 1.0;
    empty -= 1.0;
    empty *= 2.0;
    expectEmpty(empty, 0, 2);
    expectEmpty(empty + 1.0, 0, 2);
    expectEmpty(empty - 1.0, 0, 2);
    expectEmpty(empty * 1.0, 0, 2);
    EXPECT_TRUE(posted.messages().empty());
}

TEST(ZetMatrix, sumAndDifference)
{
    const ZetMatrix a = matrixOf(2, 2, {1, 2, 3, 4});
    const ZetMatrix b = matrixOf(2, 2, {0.5, -1, 8, 0});
    EXPECT_EQ(a + b, matrixOf(2, 2, {1.5, 1, 11, 4}));
    EXPECT_EQ(a - b, matrixOf(2, 2, {0.5, 3, -5, 4}));
    ZetMatrix changed = a;
    changed += b;
    EXPECT_EQ(changed, a + b);
    const ZetMatrix& itself = changed;
    changed -= itself;
    EXPECT_EQ(changed, ZetMatrix(2, 2, 0.0));
}

TEST(ZetMatrix, sumOfUnequalCounts)
{
    const ZetMatrix four = matrixOf(2, 2, {1, 2, 3, 4});
    const std::pair<ZetMatrix, ZetMatrix> pairs[] = {
        {four, ZetMatrix(1, 4, 1.0)}, {four, ZetMatrix(4, 1, 1.0)},
        {four, ZetMatrix(2, 3, 1.0)}, {four, ZetMatrix()},
        {ZetMatrix(), four},          {ZetMatrix(), ZetMatrix()},
        {ZetMatrix(2, 0, 1.0), four}, {ZetMatrix(2, 0, 1.0), ZetMatrix(2, 0, 1.0)},
    };
    for (const auto& pair : pairs) {
        const ZetMatrix& a = pair.first;
        const ZetMatrix& b = pair.second;
        SCOPED_TRACE(testing::PrintToString(a) + " and " + testing::PrintToString(b));
        ZetMatrix changed = a;
        expectPost(kCountsDiffer, [&] { changed += b; });
        expectPost(kCountsDiffer, [&] { changed -= b; });
        EXPECT_EQ(changed, a);
        ZetMatrix result(1, 1, 1.0);
        expectPost(kCountsDiffer, [&] { result = a + b; });
        expectEmpty(result);
        result = ZetMatrix(1, 1, 1.0);
        expectPost(kCountsDiffer, [&] { result = a - b; });
        expectEmpty(result);
    }
}

TEST(ZetMatrix, product)
{
    const ZetMatrix a = matrixOf(2, 3, {1, 2, 3, 4, 5, 6});
    const ZetMatrix b = matrixOf(3, 2, {7, 8, 9, 10, 11, 12});
    EXPECT_EQ(a * b, matrixOf(2, 2, {58, 64, 139, 154}));
    EXPECT_EQ(b * a, matrixOf(3, 3, {39, 54, 69, 49, 68, 87, 59, 82, 105}));
    ZetMatrix changed = a;
    EXPECT_EQ(&(changed *= b), &changed);
    EXPECT_EQ(changed, a * b);
    changed *= changed;
    EXPECT_EQ(changed,
              matrixOf(2, 2, {58 * 58 + 64 * 139, 58 * 64 + 64 * 154, 139 * 58 + 154 * 139, 139 * 64 + 154 * 154}));
    // summed in the order of the index: 1e16 takes the 1 in, and gives it back as 0
    EXPECT_EQ(matrixOf(1, 3, {1e16, 1, -1e16}) * ZetMatrix(3, 1, 1.0), ZetMatrix(1, 1, 0.0));
    EXPECT_EQ(matrixOf(1, 3, {1e16, -1e16, 1}) * ZetMatrix(3, 1, 1.0), ZetMatrix(1, 1, 1.0));
}

TEST(ZetMatrix, productThatDoesNotFit)
{
    const ZetMatrix wide = matrixOf(2, 3, {1, 2, 3, 4, 5, 6});
    const std::pair<ZetMatrix, ZetMatrix> pairs[] = {
        {wide, wide},
        {wide, ZetMatrix()},
        {ZetMatrix(), wide},
        {ZetMatrix(), ZetMatrix()},
        {wide, ZetMatrix(3, 0, 1.0)},
        {ZetMatrix(0, 2, 1.0), wide},
    };
    for (const auto& pair : pairs) {
        const ZetMatrix& a = pair.first;
        const ZetMatrix& b = pair.second;
        SCOPED_TRACE(testing::PrintToString(a) + " and " + testing::PrintToString(b));
        ZetMatrix changed = a;
        expectPost(kDoesNotFit, [&] { changed *= b; });
        EXPECT_EQ(changed, a);
        ZetMatrix result(1, 1, 1.0);
        expectPost(kDoesNotFit, [&] { result = a * b; });
        expectEmpty(result);
    }
}

TEST(ZetMatrix, normalize)
{
    ZetMatrix matrix = matrixOf(1, 3, {1, 2, 3});
    matrix.normalize();
    EXPECT_EQ(matrix, matrixOf(1, 3, {1 * (1.0 / 6.0), 2 * (1.0 / 6.0), 3 * (1.0 / 6.0)}));
    const ZetMatrix unchanged[] = {matrixOf(1, 2, {1, -1}), matrixOf(2, 1, {-3, 1}), ZetMatrix(2, 2, 0.0),
                                   ZetMatrix(3, 0, 1.0)};
    for (const ZetMatrix& before : unchanged) {
        ZetMatrix after = before;
        after.normalize();
        EXPECT_EQ(after, before);
    }
}

TEST(ZetMatrix, swap)
{
    ZetMatrix a = matrixOf(1, 2, {1, 2});
    ZetMatrix b(0, 3, 1.0);
    const double* const block = a.data();
    a.swap(b);
    expectEmpty(a, 0, 3);
    EXPECT_EQ(b.data(), block);
    expectCounts(b, 1, 2);
}

TEST(ZetMatrix, equality)
{
    const ZetMatrix a = matrixOf(2, 2, {1, 2, 3, 4});
    EXPECT_TRUE(a == matrixOf(2, 2, {1, 2, 3, 4}));
    EXPECT_FALSE(a == matrixOf(2, 2, {1, 2, 3, 5}));
    EXPECT_FALSE(a == matrixOf(2, 2, {0, 2, 3, 4}));
    EXPECT_FALSE(a == matrixOf(1, 4, {1, 2, 3, 4}));
    EXPECT_TRUE(a != matrixOf(4, 1, {1, 2, 3, 4}));
    EXPECT_TRUE(ZetMatrix(1, 1, 0.0) == ZetMatrix(1, 1, -0.0));
    const ZetMatrix nan(1, 1, kNaN);
    EXPECT_FALSE(nan == nan);
    EXPECT_TRUE(nan != nan);
    EXPECT_TRUE(ZetMatrix() == ZetMatrix());
    EXPECT_TRUE(ZetMatrix(3, 0, 1.0) == ZetMatrix(3, 0, 2.0));
    EXPECT_FALSE(ZetMatrix(3, 0, 1.0) == ZetMatrix(0, 3, 1.0));
    EXPECT_FALSE(ZetMatrix(3, 0, 1.0) == ZetMatrix());
    EXPECT_FALSE(ZetMatrix() == a);
    EXPECT_FALSE(a == ZetMatrix());
}

TEST(ZetMatrix, lessIsNotLexicographic)
{
    struct Row
    {
        ZetMatrix a;
        ZetMatrix b;
        bool less;
        bool greater;
    };
    const Row rows[] = {
        // rows first, then columns, whatever the elements
        {ZetMatrix(1, 9, 5.0), ZetMatrix(2, 1, 0.0), true, false},
        {ZetMatrix(2, 1, 5.0), ZetMatrix(2, 2, 0.0), true, false},
        {ZetMatrix(0, 9, 5.0), ZetMatrix(1, 1, 0.0), true, false},
        {ZetMatrix(3, 0, 5.0), ZetMatrix(3, 1, 0.0), true, false},
        // elements
        {matrixOf(1, 2, {1, 2}), matrixOf(1, 2, {1, 2}), false, false},
        {matrixOf(1, 2, {1, 2}), matrixOf(1, 2, {1, 3}), true, false},
        // one greater element is enough, on either side
        {matrixOf(1, 2, {5, 1}), matrixOf(1, 2, {2, 3}), true, true},
        {matrixOf(2, 2, {9, 9, 9, 1}), matrixOf(2, 2, {0, 0, 0, 2}), true, true},
        {ZetMatrix(1, 1, kNaN), ZetMatrix(1, 1, 0.0), false, false},
        {matrixOf(1, 2, {kNaN, 1}), matrixOf(1, 2, {0, 2}), true, false},
        {ZetMatrix(), ZetMatrix(), false, false},
        {ZetMatrix(3, 0, 1.0), ZetMatrix(3, 0, 2.0), false, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.a < row.b, row.less) << testing::PrintToString(row.a);
        EXPECT_EQ(row.b < row.a, row.greater) << testing::PrintToString(row.a);
    }
}

TEST(ZetMatrix, rowsAndColumns)
{
    const ZetMatrix matrix = matrixOf(2, 3, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(matrix.row(0), matrixOf(1, 3, {1, 2, 3}));
    EXPECT_EQ(matrix.row(1), matrixOf(1, 3, {4, 5, 6}));
    EXPECT_EQ(matrix.column(0), matrixOf(2, 1, {1, 4}));
    EXPECT_EQ(matrix.column(2), matrixOf(2, 1, {3, 6}));
    expectEmpty(matrix.row(2));
    expectEmpty(matrix.row(65536));
    expectEmpty(matrix.column(3));
    expectEmpty(matrix.column(65536));
    expectEmpty(ZetMatrix().row(0));
    expectEmpty(ZetMatrix(3, 0, 1.0).row(1), 1, 0);
    expectEmpty(ZetMatrix(3, 0, 1.0).column(0));
    expectEmpty(ZetMatrix(0, 3, 1.0).column(1), 0, 1);
}

TEST(ZetMatrix, transpose)
{
    EXPECT_EQ(matrixOf(2, 3, {1, 2, 3, 4, 5, 6}).transpose(), matrixOf(3, 2, {1, 4, 2, 5, 3, 6}));
    EXPECT_EQ(matrixOf(1, 3, {1, 2, 3}).transpose(), matrixOf(3, 1, {1, 2, 3}));
    expectEmpty(ZetMatrix().transpose());
    expectEmpty(ZetMatrix(3, 0, 1.0).transpose());
}

TEST(ZetMatrix, diagonal)
{
    const ZetMatrix expected = matrixOf(3, 3, {1, 0, 0, 0, 2, 0, 0, 0, 3});
    EXPECT_EQ(matrixOf(1, 3, {1, 2, 3}).diagonal(), expected);
    EXPECT_EQ(matrixOf(3, 1, {1, 2, 3}).diagonal(), expected);
    EXPECT_EQ(matrixOf(1, 1, {4}).diagonal(), matrixOf(1, 1, {4}));
    const test::ZetCollectingHandler posted;
    expectEmpty(matrixOf(2, 2, {1, 2, 3, 4}).diagonal());
    expectEmpty(ZetMatrix().diagonal());
    expectEmpty(ZetMatrix(1, 0, 1.0).diagonal());
    EXPECT_TRUE(posted.messages().empty());
}

}  // namespace
}  // namespace zet
