#include <zet/ZetMatrix>

#include <initializer_list>
#include <limits>
#include <numbers>
#include <string>

#include "quantity/ZetMatrixSupport"

namespace zet {
namespace {

using test::expectPost;
using test::identity;
using test::matrixOf;
using test::normOf;
using test::randomMatrix;

using Counts = std::initializer_list<unsigned short>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

const wchar_t* const kSingular = L"Matrix is singular, not-invertible.";
const wchar_t* const kIsEmpty = L"Matrix cannot be empty.";
const wchar_t* const kDoesNotFit = L"Number of rows for this must match number of columns in B.";

void expectNear(const ZetMatrix& actual, const ZetMatrix& expected, double tolerance)
{
    ASSERT_EQ(actual.rowCount(), expected.rowCount());
    ASSERT_EQ(actual.columnCount(), expected.columnCount());
    EXPECT_LE(normOf(actual - expected), tolerance) << testing::PrintToString(actual) << "\n"
                                                    << testing::PrintToString(expected);
}

// ---------------------------------------------------------------------------------- inverses

TEST(ZetMatrix, inverseOfASingleZeroIsSilent)
{
    const test::ZetCollectingHandler posted;
    EXPECT_EQ(ZetMatrix(1, 1, 4.0).inverse(), ZetMatrix(1, 1, 0.25));
    EXPECT_EQ(ZetMatrix(1, 1, 0.0).inverse(), ZetMatrix());
    EXPECT_EQ(ZetMatrix(1, 1, -0.0).inverse(), ZetMatrix());
    EXPECT_TRUE(posted.messages().empty());
}

TEST(ZetMatrix, inverseOfNoSquareIsSilent)
{
    const test::ZetCollectingHandler posted;
    EXPECT_EQ(ZetMatrix().inverse(), ZetMatrix());
    EXPECT_EQ(ZetMatrix(0, 3, 1.0).inverse(), ZetMatrix());
    EXPECT_EQ(ZetMatrix(2, 3, 1.0).inverse(), ZetMatrix());
    EXPECT_EQ(ZetMatrix(5, 4, 1.0).inverse(), ZetMatrix());
    EXPECT_TRUE(posted.messages().empty());
}

TEST(ZetMatrix, inverseInWholeNumbers)
{
    const std::pair<ZetMatrix, ZetMatrix> rows[] = {
        {matrixOf(2, 2, {4, 2, 7, 4}), matrixOf(2, 2, {2, -1, -3.5, 2})},
        {matrixOf(2, 2, {0, 1, 1, 0}), matrixOf(2, 2, {0, 1, 1, 0})},
        {matrixOf(3, 3, {1, 2, 3, 0, 1, 4, 5, 6, 0}), matrixOf(3, 3, {-24, 18, 5, 20, -15, -4, -5, 4, 1})},
        {matrixOf(3, 3, {0, 0, 2, 4, 0, 0, 0, 8, 0}), matrixOf(3, 3, {0, 0.25, 0, 0, 0, 0.125, 0.5, 0, 0})},
        // zeros on the diagonal need pivots from below
        {matrixOf(4, 4, {0, 0, 0, 8, 0, 2, 0, 0, 4, 0, 0, 0, 0, 0, 1, 0}),
         matrixOf(4, 4, {0, 0, 0.25, 0, 0, 0.5, 0, 0, 0, 0, 0, 1, 0.125, 0, 0, 0})},
        {matrixOf(4, 4, {1, 1, 0, 0, 0, 1, 1, 0, 0, 0, 1, 1, 0, 0, 0, 1}),
         matrixOf(4, 4, {1, -1, 1, -1, 0, 1, -1, 1, 0, 0, 1, -1, 0, 0, 0, 1})},
    };
    for (const auto& [matrix, inverse] : rows) {
        EXPECT_EQ(matrix.inverse(), inverse);
    }
}

TEST(ZetMatrix, inverseOfRandomMatrices)
{
    std::mt19937 random(3);
    for (const unsigned short order : Counts{2, 3, 4, 5, 8, 31, 64}) {
        for (int i = 0; i < 20; ++i) {
            const ZetMatrix matrix = randomMatrix(order, order, random);
            const ZetMatrix inverse = matrix.inverse();
            const double condition = normOf(matrix) * normOf(inverse);
            expectNear(matrix * inverse, identity(order), 1e-15 * order * condition);
            expectNear(inverse * matrix, identity(order), 1e-15 * order * condition);
        }
    }
}

TEST(ZetMatrix, inverseOfSingularMatrices)
{
    const ZetMatrix rows[] = {
        matrixOf(2, 2, {1, 2, 2, 4}),
        ZetMatrix(2, 2, 0.0),
        matrixOf(3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9}),
        ZetMatrix(3, 3, 1.0),
        matrixOf(4, 4, {1, 2, 3, 4, 2, 4, 6, 8, 0, 1, 0, 1, 1, 0, 0, 1}),
        matrixOf(4, 4, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}),
        ZetMatrix(5, 5, 0.0),
    };
    for (const ZetMatrix& matrix : rows) {
        ZetMatrix result(1, 1, 1.0);
        expectPost(kSingular, [&] { result = matrix.inverse(); });
        EXPECT_EQ(result, ZetMatrix()) << testing::PrintToString(matrix);
    }
}

TEST(ZetMatrix, inverseOfASingularMatrixWithAResidue)
{
    // the last row is the sum of the others, but its sums are rounded: the last pivot is -8.3e-17
    const ZetMatrix matrix = matrixOf(4, 4,
                                      {0.1, 0.2, 0.3, 0.4, 0.7, 0.1, 0.5, 0.2, 0.3, 0.9, 0.1, 0.6, 0.1 + 0.7 + 0.3,
                                       0.2 + 0.1 + 0.9, 0.3 + 0.5 + 0.1, 0.4 + 0.2 + 0.6});
    const test::ZetCollectingHandler posted;
    const ZetMatrix inverse = matrix.inverse();
    EXPECT_TRUE(posted.messages().empty());
    ASSERT_EQ(inverse.elementCount(), 16u);
    EXPECT_GT(normOf(inverse), 1e15);
}

TEST(ZetMatrix, pivotIsTheFirstOfTheLargest)
{
    // 1 + 2^-53 rounds to 1, so which row of equal ones leads shows in what is left
    const double tiny = 0x1p-53;
    const ZetMatrix matrix = matrixOf(4, 4, {1, 1, 0, 0, -1, tiny, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    // row 0 leads: row 1 becomes tiny + 1, which is 1, and the inverse has no trace of tiny
    EXPECT_EQ(matrix.inverse(), matrixOf(4, 4, {0, -1, 0, 0, 1, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
}

TEST(ZetMatrix, inverseOfNaN)
{
    const test::ZetCollectingHandler posted;
    for (const unsigned short order : Counts{1, 2, 3, 4}) {
        EXPECT_TRUE(std::isnan(ZetMatrix(order, order, kNaN).inverse()(0, 0)));
    }
    EXPECT_TRUE(posted.messages().empty());
}

// ---------------------------------------------------------------------------------- decompositions

struct Parts
{
    explicit Parts(const ZetMatrix& matrix) { result = matrix.singularValueDecomposition(u, s, v, true, true, true); }

    ZetMatrix u;
    std::vector<double> s;
    ZetMatrix v;
    int result;
};

/// Whether the parts are what a decomposition of \p matrix is.
void expectDecomposes(const ZetMatrix& matrix)
{
    const unsigned short rank = std::min(matrix.rowCount(), matrix.columnCount());
    const Parts parts(matrix);
    ASSERT_EQ(parts.result, rank);
    ASSERT_EQ(parts.s.size(), rank);
    ASSERT_EQ(parts.u.rowCount(), matrix.rowCount());
    ASSERT_EQ(parts.u.columnCount(), rank);
    ASSERT_EQ(parts.v.rowCount(), matrix.columnCount());
    ASSERT_EQ(parts.v.columnCount(), matrix.columnCount());
    expectNear(parts.u.transpose() * parts.u, identity(rank), 1e-13);
    expectNear(parts.v.transpose() * parts.v, identity(matrix.columnCount()), 1e-13);
    ZetMatrix diagonal(rank, matrix.columnCount(), 0.0);
    for (unsigned int i = 0; i < rank; ++i) {
        EXPECT_GE(parts.s[i], i + 1 < rank ? parts.s[i + 1] : 0.0);
        diagonal(i, i) = parts.s[i];
    }
    expectNear(parts.u * diagonal * parts.v.transpose(), matrix, 1e-13 * normOf(matrix));
}

struct Shape
{
    unsigned short rows;
    unsigned short columns;
};

const Shape kShapes[] = {{1, 1},  {1, 2},   {2, 1}, {2, 2}, {3, 2},   {2, 3},   {1, 7},   {7, 1},   {3, 3},
                         {4, 4},  {4, 7},   {7, 4}, {6, 7}, {7, 6},   {10, 11}, {11, 10}, {20, 20}, {50, 3},
                         {3, 50}, {64, 64}, {9, 8}, {8, 9}, {33, 17}, {17, 33}, {100, 10}};

TEST(ZetMatrix, decompositionOfRandomMatrices)
{
    std::mt19937 random(1);
    for (const Shape& shape : kShapes) {
        for (int i = 0; i < 10; ++i) {
            SCOPED_TRACE(std::to_string(shape.rows) + " x " + std::to_string(shape.columns));
            expectDecomposes(randomMatrix(shape.rows, shape.columns, random));
        }
    }
}

TEST(ZetMatrix, decompositionOfRankDeficientMatrices)
{
    std::mt19937 random(2);
    for (const Shape& shape : kShapes) {
        SCOPED_TRACE(std::to_string(shape.rows) + " x " + std::to_string(shape.columns));
        for (const unsigned short rank : Counts{1, 2, 3}) {
            expectDecomposes(randomMatrix(shape.rows, rank, random) * randomMatrix(rank, shape.columns, random));
        }
        expectDecomposes(ZetMatrix(shape.rows, shape.columns, 0.0));
        expectDecomposes(ZetMatrix(shape.rows, shape.columns, 1.0));
        // every other column, then every other row, is 0
        ZetMatrix gaps = randomMatrix(shape.rows, shape.columns, random);
        for (std::size_t i = 0; i < gaps.elementCount(); i += 2) {
            gaps.data()[i] = 0.0;
        }
        expectDecomposes(gaps);
    }
}

TEST(ZetMatrix, decompositionOfEverySmallMatrix)
{
    // all matrices of the numbers -1, 0 and 1 with up to six elements
    const Shape shapes[] = {{1, 2}, {2, 1}, {2, 2}, {1, 5}, {5, 1}, {2, 3}, {3, 2}};
    for (const Shape& shape : shapes) {
        ZetMatrix matrix(shape.rows, shape.columns, -1.0);
        for (std::size_t digit = 0; digit < matrix.elementCount();) {
            expectDecomposes(matrix);
            for (digit = 0; digit < matrix.elementCount() && matrix.data()[digit] == 1.0; ++digit) {
                matrix.data()[digit] = -1.0;
            }
            if (digit < matrix.elementCount()) {
                matrix.data()[digit] += 1.0;
            }
        }
    }
}

TEST(ZetMatrix, decompositionFarFromOne)
{
    std::mt19937 random(4);
    for (const double scale : {1e-300, 1e-160, 1e-100, 1e100, 1e155, 1e290}) {
        const ZetMatrix matrix = randomMatrix(6, 4, random);
        const Parts parts(matrix);
        const Parts scaled(matrix * scale);
        ASSERT_EQ(scaled.result, 4);
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_NEAR(scaled.s[i] / scale, parts.s[i], 1e-13) << scale;
        }
        expectNear(scaled.u.transpose() * scaled.u, identity(4), 1e-13);
        expectNear(scaled.v.transpose() * scaled.v, identity(4), 1e-13);
    }
}

TEST(ZetMatrix, knownSingularValues)
{
    // a 45-degree classic
    const Parts small(matrixOf(2, 2, {3, 0, 4, 5}));
    EXPECT_NEAR(small.s[0], std::sqrt(45.0), 1e-14);
    EXPECT_NEAR(small.s[1], std::sqrt(5.0), 1e-14);
    // the golden ratio and its inverse
    const Parts golden(matrixOf(2, 2, {1, 1, 0, 1}));
    EXPECT_NEAR(golden.s[0], std::numbers::phi, 1e-15);
    EXPECT_NEAR(golden.s[1], 1.0 / std::numbers::phi, 1e-15);
    // the second difference has the eigenvalues 2 - 2 cos(k pi / (n + 1))
    const unsigned short n = 30;
    ZetMatrix difference(n, n, 0.0);
    for (unsigned int i = 0; i < n; ++i) {
        difference(i, i) = 2.0;
        if (i + 1 < n) {
            difference(i, i + 1) = difference(i + 1, i) = -1.0;
        }
    }
    const Parts parts(difference);
    for (int k = 1; k <= n; ++k) {
        EXPECT_NEAR(parts.s[static_cast<std::size_t>(n - k)], 2.0 - 2.0 * std::cos(k * std::numbers::pi / (n + 1)),
                    1e-14);
    }
}

TEST(ZetMatrix, signsOfTheFactors)
{
    // a single element: no reflection, and a negative value turns its column of v
    const Parts single(ZetMatrix(1, 1, -3.0));
    EXPECT_EQ(single.u, ZetMatrix(1, 1, 1.0));
    EXPECT_EQ(single.s, std::vector<double>{3.0});
    EXPECT_EQ(single.v, ZetMatrix(1, 1, -1.0));
    // a reflection makes the value negative, so v turns
    const Parts column(matrixOf(2, 1, {3, 4}));
    expectNear(column.u, matrixOf(2, 1, {-0.6, -0.8}), 1e-15);
    EXPECT_NEAR(column.s[0], 5.0, 1e-15);
    EXPECT_EQ(column.v, ZetMatrix(1, 1, -1.0));
    const Parts below(matrixOf(2, 1, {-3, 4}));
    expectNear(below.u, matrixOf(2, 1, {-0.6, 0.8}), 1e-15);
    EXPECT_EQ(below.v, ZetMatrix(1, 1, 1.0));
    // values out of order change places with their columns
    const Parts diagonal(matrixOf(1, 3, {1, 2, 3}).diagonal());
    EXPECT_EQ(diagonal.s, (std::vector<double>{3, 2, 1}));
    EXPECT_EQ(diagonal.u, matrixOf(3, 3, {0, 0, -1, 0, -1, 0, 1, 0, 0}));
    EXPECT_EQ(diagonal.v, matrixOf(3, 3, {0, 0, -1, 0, -1, 0, 1, 0, 0}));
}

TEST(ZetMatrix, decompositionOfTheEmpty)
{
    ZetMatrix u(1, 1, 5.0);
    ZetMatrix v(1, 2, 6.0);
    std::vector<double> s = {7.0};
    for (const ZetMatrix& empty : {ZetMatrix(), ZetMatrix(3, 0, 1.0), ZetMatrix(0, 3, 1.0)}) {
        int result = 5;
        expectPost(kIsEmpty, [&] { result = empty.singularValueDecomposition(u, s, v, true, true, true); });
        EXPECT_EQ(result, -1);
    }
    EXPECT_EQ(u, ZetMatrix(1, 1, 5.0));
    EXPECT_EQ(v, ZetMatrix(1, 2, 6.0));
    EXPECT_EQ(s, std::vector<double>{7.0});
}

TEST(ZetMatrix, factorsOnlyWhereWanted)
{
    std::mt19937 random(5);
    for (const Shape& shape : {Shape{5, 3}, Shape{3, 5}, Shape{4, 4}}) {
        const ZetMatrix matrix = randomMatrix(shape.rows, shape.columns, random);
        const Parts all(matrix);
        for (const bool wantU : {false, true}) {
            for (const bool wantV : {false, true}) {
                for (const bool last : {false, true}) {
                    ZetMatrix u(1, 1, 5.0);
                    ZetMatrix v(1, 1, 6.0);
                    std::vector<double> s(20, 1.0);
                    EXPECT_EQ(matrix.singularValueDecomposition(u, s, v, wantU, wantV, last), all.result);
                    EXPECT_EQ(s, all.s);
                    EXPECT_EQ(u, wantU ? all.u : ZetMatrix(1, 1, 5.0));
                    EXPECT_EQ(v, wantV ? all.v : ZetMatrix(1, 1, 6.0));
                }
            }
        }
    }
}

TEST(ZetMatrix, decompositionReusesU)
{
    const ZetMatrix matrix = matrixOf(3, 2, {1, 2, 3, 4, 5, 7});
    const Parts expected(matrix);
    ZetMatrix u(3, 2, 9.0);
    ZetMatrix v;
    std::vector<double> s;
    const double* const block = u.data();
    matrix.singularValueDecomposition(u, s, v, true, true, true);
    EXPECT_EQ(u.data(), block);
    EXPECT_EQ(u, expected.u);
    // it may also be the matrix itself
    ZetMatrix itself = matrix;
    itself.singularValueDecomposition(itself, s, v, true, true, true);
    EXPECT_EQ(itself, expected.u);
    EXPECT_EQ(v, expected.v);
}

TEST(ZetMatrix, decompositionReusesV)
{
    struct Row
    {
        const char* what;
        Shape matrix;
        bool wantU;
        Shape u;
        Shape v;
        unsigned short vColumns;
    };
    const Row rows[] = {
        {"of the right shape", {3, 2}, true, {1, 1}, {2, 2}, 2},
        {"wider", {3, 2}, true, {1, 1}, {2, 5}, 5},
        {"narrower: its block is too small", {3, 2}, true, {1, 1}, {2, 1}, 2},
        {"without a block", {3, 2}, true, {1, 1}, {2, 0}, 2},
        {"of other rows", {3, 2}, true, {1, 1}, {3, 5}, 2},
        {"u not wanted, with n columns", {3, 2}, false, {7, 2}, {2, 5}, 5},
        {"u not wanted, with other columns", {3, 2}, false, {7, 3}, {2, 5}, 2},
        {"u of a wide matrix has m columns", {2, 3}, true, {3, 3}, {3, 5}, 3},
        {"wide, u not wanted, with n columns", {2, 3}, false, {1, 3}, {3, 5}, 5},
    };
    std::mt19937 random(6);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const ZetMatrix matrix = randomMatrix(row.matrix.rows, row.matrix.columns, random);
        const Parts expected(matrix);
        ZetMatrix u(row.u.rows, row.u.columns, 9.0);
        ZetMatrix v(row.v.rows, row.v.columns, 9.0);
        std::vector<double> s;
        matrix.singularValueDecomposition(u, s, v, row.wantU, true, true);
        ASSERT_EQ(v.rowCount(), row.matrix.columns);
        ASSERT_EQ(v.columnCount(), row.vColumns);
        for (unsigned int r = 0; r < v.rowCount(); ++r) {
            for (unsigned int c = 0; c < v.columnCount(); ++c) {
                EXPECT_EQ(v(r, c), c < expected.v.columnCount() ? expected.v(r, c) : 0.0);
            }
        }
    }
}

TEST(ZetMatrix, decompositionThatDoesNotSettle)
{
    // a NaN is never negligible: the last value uses its steps up
    for (const double odd : {kNaN, kInfinity}) {
        const Parts square(ZetMatrix(3, 3, odd));
        EXPECT_EQ(square.result, 2);
        EXPECT_EQ(square.s.size(), 3u);
        const Parts tall(ZetMatrix(5, 3, odd));
        EXPECT_EQ(tall.result, 2);
        // a wide matrix has one row more in its bidiagonal, which stays in s
        const Parts wide(ZetMatrix(2, 4, odd));
        EXPECT_EQ(wide.result, 2);
        EXPECT_EQ(wide.s.size(), 3u);
        EXPECT_EQ(wide.u.columnCount(), 2);
        EXPECT_EQ(wide.v.columnCount(), 4);
        expectPost(kDoesNotFit, [&] { ZetMatrix(2, 4, odd).pseudoInverse(); });
        EXPECT_EQ(ZetMatrix(2, 4, odd).leastSquares(ZetMatrix(2, 1, 1.0)).elementCount(), 4u);
    }
}

// ---------------------------------------------------------------------------------- pseudo-inverses

TEST(ZetMatrix, pseudoInverse)
{
    const ZetMatrix tall = matrixOf(3, 2, {1, 0, 0, 2, 0, 0});
    expectNear(tall.pseudoInverse(), matrixOf(2, 3, {1, 0, 0, 0, 0.5, 0}), 1e-15);
    expectNear(ZetMatrix(2, 3, 1.0).pseudoInverse(), ZetMatrix(3, 2, 1.0 / 6.0), 1e-15);
    EXPECT_EQ(ZetMatrix(2, 3, 0.0).pseudoInverse(), ZetMatrix(3, 2, 0.0));

    std::mt19937 random(7);
    for (const Shape& shape : kShapes) {
        for (const unsigned short rank : Counts{1, 2, 50}) {
            const ZetMatrix a = randomMatrix(shape.rows, rank, random) * randomMatrix(rank, shape.columns, random);
            const ZetMatrix inverse = a.pseudoInverse();
            ASSERT_EQ(inverse.rowCount(), shape.columns);
            ASSERT_EQ(inverse.columnCount(), shape.rows);
            const double condition = normOf(a) * normOf(inverse);
            expectNear(a * inverse * a, a, 1e-14 * condition * normOf(a));
            expectNear(inverse * a * inverse, inverse, 1e-14 * condition * normOf(inverse));
            expectNear(a * inverse, (a * inverse).transpose(), 1e-14 * condition);
            expectNear(inverse * a, (inverse * a).transpose(), 1e-14 * condition);
        }
    }
    for (const ZetMatrix& empty : {ZetMatrix(), ZetMatrix(3, 0, 1.0)}) {
        ZetMatrix result(1, 1, 1.0);
        expectPost(kIsEmpty, [&] { result = empty.pseudoInverse(); });
        EXPECT_EQ(result, ZetMatrix());
    }
}

TEST(ZetMatrix, cutOfSmallSingularValuesIsStrict)
{
    const auto secondOf = [](double first, double second) {
        return matrixOf(1, 2, {first, second}).diagonal().pseudoInverse()(1, 1);
    };
    EXPECT_EQ(secondOf(1.0, 1e-12), 0.0);
    EXPECT_EQ(secondOf(1.0, std::nextafter(1e-12, 1.0)), 1.0 / std::nextafter(1e-12, 1.0));
    EXPECT_EQ(secondOf(4.0, 4e-12), 0.0);
    // the cut is that of the value itself, not of its inverse
    EXPECT_EQ(secondOf(1e-3, 1e-14), 1.0 / 1e-14);
    const ZetMatrix matrix = matrixOf(1, 2, {1.0, 1e-12}).diagonal();
    EXPECT_EQ(matrix.leastSquares(ZetMatrix(2, 1, 1.0)), matrixOf(2, 1, {1, 0}));
}

// ---------------------------------------------------------------------------------- least squares

/// The powers 0 to degree of each number, a row a number.
ZetMatrix powers(const std::vector<double>& x, unsigned short degree)
{
    ZetMatrix result(static_cast<unsigned short>(x.size()), static_cast<unsigned short>(degree + 1), 1.0);
    for (unsigned int r = 0; r < result.rowCount(); ++r) {
        for (unsigned int c = 1; c <= degree; ++c) {
            result(r, c) = result(r, c - 1) * x[r];
        }
    }
    return result;
}

ZetMatrix columnOf(const std::vector<double>& elements)
{
    return matrixOf(static_cast<unsigned short>(elements.size()), 1, elements);
}

// Linear regressions of the Statistical Reference Datasets of the National Institute of Standards and
// Technology (StRD): data, certified parameters, and how far a result in double precision may be off,
// relative to each parameter.
const std::vector<double> kNorrisX = {
    0.2, 337.4, 118.2, 884.6, 10.1,  226.5, 666.3, 996.3, 448.6, 777,   558.2, 0.4,
    0.6, 775.5, 666.9, 338,   447.5, 11.6,  556,   228.1, 995.8, 887.6, 120.2, 0.3,
    0.3, 556.8, 339.1, 887.2, 999,   779,   11.1,  118.3, 229.2, 669.1, 448.9, 0.5,
};
const std::vector<double> kNorrisY = {
    0.1, 338.8, 118.1, 888,   9.2,   228.1, 668.5, 998.5, 449.1, 778.9, 559.2, 0.3,
    0.1, 778.1, 668.8, 339.3, 448.9, 10.8,  557.7, 228.3, 998,   888.8, 119.6, 0.3,
    0.6, 557.6, 339.3, 888,   998.5, 778.9, 10.2,  117.6, 228.9, 668.4, 449.2, 0.2,
};
const std::vector<double> kLongleyX = {
    1, 83,    234289, 2356, 1590, 107608, 1947, 1, 88.5,  259426, 2325, 1456, 108632, 1948,
    1, 88.2,  258054, 3682, 1616, 109773, 1949, 1, 89.5,  284599, 3351, 1650, 110929, 1950,
    1, 96.2,  328975, 2099, 3099, 112075, 1951, 1, 98.1,  346999, 1932, 3594, 113270, 1952,
    1, 99,    365385, 1870, 3547, 115094, 1953, 1, 100,   363112, 3578, 3350, 116219, 1954,
    1, 101.2, 397469, 2904, 3048, 117388, 1955, 1, 104.6, 419180, 2822, 2857, 118734, 1956,
    1, 108.4, 442769, 2936, 2798, 120445, 1957, 1, 110.8, 444546, 4681, 2637, 121950, 1958,
    1, 112.6, 482704, 3813, 2552, 123366, 1959, 1, 114.2, 502601, 3931, 2514, 125368, 1960,
    1, 115.7, 518173, 4806, 2572, 127852, 1961, 1, 116.9, 554894, 4007, 2827, 130081, 1962,
};
const std::vector<double> kLongleyY = {
    60323, 61122, 60171, 61187, 63221, 63639, 64989, 63761, 66019, 67857, 68169, 66513, 68655, 69564, 69331, 70551,
};
const std::vector<double> kNoInt1X = {
    60, 61, 62, 63, 64, 65, 66, 67, 68, 69, 70,
};
const std::vector<double> kNoInt1Y = {
    130, 131, 132, 133, 134, 135, 136, 137, 138, 139, 140,
};
const std::vector<double> kWampler1Y = {
    1,      6,      63,     364,    1365,   3906,    9331,    19608,   37449,   66430,   111111,
    177156, 271453, 402234, 579195, 813616, 1118481, 1508598, 2000719, 2613660, 3368421,
};
const std::vector<double> kWampler2Y = {
    1,       1.11111, 1.24992,  1.42753,  1.65984,  1.96875,  2.38336,  2.94117,  3.68928,  4.68559, 6,
    7.71561, 9.92992, 12.75603, 16.32384, 20.78125, 26.29536, 33.05367, 41.26528, 51.16209, 63,
};

TEST(ZetMatrix, leastSquaresOfReferenceProblems)
{
    std::vector<double> wamplerX;
    for (int x = 0; x <= 20; ++x) {
        wamplerX.push_back(x);
    }
    struct Row
    {
        const char* name;
        ZetMatrix matrix;
        std::vector<double> y;
        std::vector<double> certified;
        double allowed;
    };
    const Row rows[] = {
        {"Norris", powers(kNorrisX, 1), kNorrisY, {-0.262323073774029, 1.00211681802045}, 2.9e-11},
        {"Longley",
         matrixOf(16, 7, kLongleyX),
         kLongleyY,
         {-3482258.63459582, 15.0618722713733, -0.035819179292591, -2.02022980381683, -1.03322686717359,
          -0.0511041056535807, 1829.15146461355},
         4.6e-9},
        {"NoInt1", columnOf(kNoInt1X), kNoInt1Y, {2.07438016528926}, 1e-12},
        {"Wampler1", powers(wamplerX, 5), kWampler1Y, {1, 1, 1, 1, 1, 1}, 5e-8},
        {"Wampler2", powers(wamplerX, 5), kWampler2Y, {1, 0.1, 0.01, 0.001, 0.0001, 0.00001}, 2.9e-9},
    };
    for (const Row& row : rows) {
        const ZetMatrix solved = row.matrix.leastSquares(columnOf(row.y));
        const ZetMatrix byInverse = row.matrix.pseudoInverse() * columnOf(row.y);
        ASSERT_EQ(solved.rowCount(), row.certified.size()) << row.name;
        ASSERT_EQ(solved.columnCount(), 1) << row.name;
        for (unsigned int i = 0; i < solved.rowCount(); ++i) {
            const double certified = row.certified[i];
            EXPECT_NEAR(solved(i, 0), certified, std::abs(certified) * row.allowed) << row.name << ", parameter " << i;
            EXPECT_NEAR(byInverse(i, 0), certified, std::abs(certified) * 1e-5) << row.name << ", parameter " << i;
        }
    }
}

TEST(ZetMatrix, leastSquaresOfManyRightSides)
{
    std::mt19937 random(8);
    for (const Shape& shape : kShapes) {
        SCOPED_TRACE(std::to_string(shape.rows) + " x " + std::to_string(shape.columns));
        const ZetMatrix a = randomMatrix(shape.rows, shape.columns, random);
        const ZetMatrix b = randomMatrix(shape.rows, 3, random);
        const ZetMatrix x = a.leastSquares(b);
        const ZetMatrix inverse = a.pseudoInverse();
        const double condition = normOf(a) * normOf(inverse);
        expectNear(x, inverse * b, 1e-14 * condition * normOf(x));
        for (unsigned int c = 0; c < 3; ++c) {
            EXPECT_EQ(a.leastSquares(b.column(c)), x.column(c));
        }
    }
}

TEST(ZetMatrix, leastSquaresAnswersTheShortest)
{
    // x + y = 2 has many solutions
    expectNear(ZetMatrix(1, 2, 1.0).leastSquares(ZetMatrix(1, 1, 2.0)), ZetMatrix(2, 1, 1.0), 1e-15);
    // and so have equal equations
    expectNear(ZetMatrix(3, 2, 1.0).leastSquares(matrixOf(3, 1, {1, 2, 3})), ZetMatrix(2, 1, 1.0), 1e-14);
    EXPECT_EQ(ZetMatrix(3, 2, 0.0).leastSquares(ZetMatrix(3, 1, 1.0)), ZetMatrix(2, 1, 0.0));
}

TEST(ZetMatrix, leastSquaresThatCannotBe)
{
    const ZetMatrix some = matrixOf(3, 2, {1, 2, 3, 4, 5, 6});
    struct Row
    {
        ZetMatrix a;
        ZetMatrix b;
        const wchar_t* message;
    };
    const Row rows[] = {
        {some, ZetMatrix(), kIsEmpty},
        {ZetMatrix(), ZetMatrix(), kIsEmpty},
        {ZetMatrix(), ZetMatrix(3, 1, 1.0), kIsEmpty},
        {ZetMatrix(3, 0, 1.0), ZetMatrix(3, 1, 1.0), kIsEmpty},
        {ZetMatrix(0, 3, 1.0), ZetMatrix(0, 1, 1.0), kIsEmpty},
        // an empty right side of unequal counts fails as a product
        {some, ZetMatrix(3, 0, 1.0), kDoesNotFit},
        {some, ZetMatrix(0, 3, 1.0), kDoesNotFit},
        {some, ZetMatrix(2, 1, 1.0), kDoesNotFit},
        {some, ZetMatrix(4, 1, 1.0), kDoesNotFit},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.a) + " and " + testing::PrintToString(row.b));
        ZetMatrix result(1, 1, 1.0);
        expectPost(row.message, [&] { result = row.a.leastSquares(row.b); });
        EXPECT_EQ(result, ZetMatrix());
    }
}

}  // namespace
}  // namespace zet
