// Inverses, and what the singular value decomposition answers.

#include <zet/ZetMatrix>

#include <algorithm>
#include <cmath>

#include "core/ZetUnitInit"
#include "quantity/ZetMatrix_p"
#include "quantity/ZetSingularValues"

namespace zet {
namespace {

using internal::postMatrixError;
using internal::zeroMatrix;

ZetMatrix refuseSingular()
{
    postMatrixError(L"Matrix is singular, not-invertible.", __LINE__);
    return ZetMatrix();
}

/// The transposed cofactors of \p order rows and columns, divided by the determinant.
ZetMatrix scaledAdjugate(unsigned short order, double determinant, const std::vector<double>& adjugate)
{
    if (determinant == 0.0) {
        return refuseSingular();
    }
    ZetMatrix result(order, order, adjugate, ZetMatrix::RowMajor);
    result *= 1.0 / determinant;
    return result;
}

ZetMatrix inverseOfTwo(const ZetMatrix& a)
{
    return scaledAdjugate(2, a(0, 0) * a(1, 1) - a(0, 1) * a(1, 0), {a(1, 1), -a(0, 1), -a(1, 0), a(0, 0)});
}

ZetMatrix inverseOfThree(const ZetMatrix& a)
{
    const double determinant =
        (a(0, 2) * a(1, 0) * a(2, 1) + a(0, 0) * a(1, 1) * a(2, 2) + a(0, 1) * a(1, 2) * a(2, 0)) -
        a(0, 2) * a(1, 1) * a(2, 0) - a(0, 1) * a(1, 0) * a(2, 2) - a(0, 0) * a(1, 2) * a(2, 1);
    // The minor without row r and column c, with its sign.
    const auto cofactor = [&a](unsigned int r, unsigned int c) {
        const unsigned int r1 = (r + 1) % 3;
        const unsigned int r2 = (r + 2) % 3;
        const unsigned int c1 = (c + 1) % 3;
        const unsigned int c2 = (c + 2) % 3;
        return a(r1, c1) * a(r2, c2) - a(r1, c2) * a(r2, c1);
    };
    return scaledAdjugate(3, determinant,
                          {cofactor(0, 0), cofactor(1, 0), cofactor(2, 0), cofactor(0, 1), cofactor(1, 1),
                           cofactor(2, 1), cofactor(0, 2), cofactor(1, 2), cofactor(2, 2)});
}

/// The row at or below \p k with the largest absolute value in column k, the first of equals.
unsigned int pivotRow(const ZetMatrix& a, unsigned int k)
{
    unsigned int pivot = k;
    for (unsigned int r = k + 1; r < a.rowCount(); ++r) {
        if (std::abs(a(r, k)) > std::abs(a(pivot, k))) {
            pivot = r;
        }
    }
    return pivot;
}

void swapRows(ZetMatrix& a, unsigned int r, unsigned int other)
{
    if (r != other) {
        std::swap_ranges(&a(r, 0), &a(r, 0) + a.columnCount(), &a(other, 0));
    }
}

void divideRow(ZetMatrix& a, unsigned int r, double divisor)
{
    for (unsigned int c = 0; c < a.columnCount(); ++c) {
        a(r, c) /= divisor;
    }
}

/// Subtracts \p factor times row \p k from row \p r.
void subtractRow(ZetMatrix& a, unsigned int r, double factor, unsigned int k)
{
    double* const target = &a(r, 0);
    const double* const source = &a(k, 0);
    for (unsigned int c = 0; c < a.columnCount(); ++c) {
        target[c] -= factor * source[c];
    }
}

ZetMatrix inverseByElimination(ZetMatrix a)
{
    const unsigned short order = a.rowCount();
    ZetMatrix result = zeroMatrix(order, order);
    for (unsigned int i = 0; i < order; ++i) {
        result(i, i) = 1.0;
    }
    for (unsigned int k = 0; k < order; ++k) {
        const unsigned int pivot = pivotRow(a, k);
        if (a(pivot, k) == 0.0) {
            return refuseSingular();
        }
        swapRows(a, k, pivot);
        swapRows(result, k, pivot);
        const double divisor = a(k, k);
        divideRow(a, k, divisor);
        divideRow(result, k, divisor);
        for (unsigned int r = 0; r < order; ++r) {
            if (r != k) {
                const double factor = a(r, k);
                subtractRow(a, r, factor, k);
                subtractRow(result, r, factor, k);
            }
        }
    }
    return result;
}

/// The inverses of singular values, 0.0 for those that are not above 1e-12 of the first.
std::vector<double> inverted(std::vector<double> values)
{
    const double cut = values.front() * 1e-12;
    for (double& value : values) {
        value = value > cut ? 1.0 / value : 0.0;
    }
    return values;
}

/// Fills \p matrix with zeros, in the block that stands when it has the counts.
void makeZero(ZetMatrix& matrix, unsigned short rowCount, unsigned short columnCount)
{
    if (matrix.rowCount() == rowCount && matrix.columnCount() == columnCount) {
        matrix = 0.0;
    } else {
        zeroMatrix(rowCount, columnCount).swap(matrix);
    }
}

}  // namespace

ZetMatrix ZetMatrix::inverse() const
{
    if (isEmpty() || m_rowCount != m_columnCount) {
        return ZetMatrix();
    }
    switch (m_rowCount) {
        case 1:
            return m_elements[0] == 0.0 ? ZetMatrix() : ZetMatrix(1, 1, 1.0 / m_elements[0]);
        case 2:
            return inverseOfTwo(*this);
        case 3:
            return inverseOfThree(*this);
        default:
            return inverseByElimination(*this);
    }
}

int ZetMatrix::singularValueDecomposition(ZetMatrix& u, std::vector<double>& s, ZetMatrix& v, bool wantU, bool wantV,
                                          bool) const
{
    if (isEmpty()) {
        postMatrixError(internal::kMatrixIsEmpty, __LINE__);
        return -1;
    }
    const unsigned short n = m_columnCount;
    internal::ZetSingularValues values(*this, wantU, wantV);
    const int result = values.decompose();
    s = values.values();
    if (wantU) {
        makeZero(u, m_rowCount, std::min(m_rowCount, n));
        values.storeU(u);
    }
    if (wantV) {
        const bool isReused = v.rowCount() == n && v.columnCount() >= n && u.columnCount() == n;
        makeZero(v, n, isReused ? v.columnCount() : n);
        values.storeV(v);
    }
    return result;
}

ZetMatrix ZetMatrix::pseudoInverse() const
{
    ZetMatrix u;
    ZetMatrix v;
    std::vector<double> s;
    if (singularValueDecomposition(u, s, v, true, true, true) < 0) {
        return ZetMatrix();
    }
    s = inverted(s);
    ZetMatrix diagonal = zeroMatrix(v.columnCount(), static_cast<unsigned short>(s.size()));
    for (unsigned int i = 0; i < s.size(); ++i) {
        diagonal(i, i) = s[i];
    }
    return (v * diagonal) * u.transpose();
}

ZetMatrix ZetMatrix::leastSquares(const ZetMatrix& b) const
{
    if (isEmpty() || (b.isEmpty() && b.rowCount() == b.columnCount())) {
        postMatrixError(internal::kMatrixIsEmpty, __LINE__);
        return ZetMatrix();
    }
    if (b.isEmpty() || b.rowCount() != m_rowCount) {
        postMatrixError(internal::kProductDoesNotFit, __LINE__);
        return ZetMatrix();
    }
    internal::ZetSingularValues parts(*this, b);
    parts.decompose();
    const std::vector<double> s = inverted(parts.values());
    ZetMatrix d = zeroMatrix(m_columnCount, b.columnCount());
    for (unsigned int i = 0; i < std::min(m_rowCount, m_columnCount); ++i) {
        for (unsigned int j = 0; j < d.columnCount(); ++j) {
            d(i, j) = s[i] * parts.solved(i, j);
        }
    }
    ZetMatrix v = zeroMatrix(m_columnCount, m_columnCount);
    parts.storeV(v);
    return v * d;
}

}  // namespace zet
