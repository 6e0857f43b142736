#include <zet/ZetMatrix>

#include <algorithm>
#include <functional>
#include <new>
#include <utility>

#include <zet/ZetCoreFunctions>

#include "core/ZetUnitInit"
#include "quantity/ZetMatrix_p"

namespace zet {
namespace internal {

void postMatrixError(const ZetString& text, int line)
{
    postMessage(ZetTextMsg(text, L"ZetMatrix", line, ZetTextMsg::Error));
}

namespace {

double* newElements(std::size_t count)
{
    return new double[count];
}

}  // namespace

double* (*acquireElements)(std::size_t count) = newElements;

ZetMatrix zeroMatrix(unsigned short rowCount, unsigned short columnCount)
{
    ZetMatrix result(rowCount, columnCount, 0.0);
    if (result.rowCount() != rowCount) {
        throw std::bad_alloc();
    }
    return result;
}

}  // namespace internal

namespace {

using internal::acquireElements;
using internal::postMatrixError;

constexpr const wchar_t* kCountsDiffer = L"Matrix dimensions must match.";

bool haveEqualCounts(const ZetMatrix& a, const ZetMatrix& b)
{
    return a.rowCount() == b.rowCount() && a.columnCount() == b.columnCount();
}

/// Whether two matrices can be added; a message is posted when not.
bool canAdd(const ZetMatrix& a, const ZetMatrix& b)
{
    const bool can = haveEqualCounts(a, b) && !a.isEmpty() && !b.isEmpty();
    if (!can) {
        postMatrixError(kCountsDiffer, __LINE__);
    }
    return can;
}

/// Whether two matrices have a product; a message is posted when not.
bool canMultiply(const ZetMatrix& a, const ZetMatrix& b)
{
    const bool can = a.columnCount() == b.rowCount() && !a.isEmpty() && !b.isEmpty();
    if (!can) {
        postMatrixError(internal::kProductDoesNotFit, __LINE__);
    }
    return can;
}

/// a = fn(a, value) for each element.
template <class Fn>
void combine(ZetMatrix& a, double value, Fn fn)
{
    double* const elements = a.data();
    const std::size_t count = a.elementCount();
    for (std::size_t i = 0; i < count; ++i) {
        elements[i] = fn(elements[i], value);
    }
}

/// a = fn(a, b) for each pair of elements.
template <class Fn>
void combine(ZetMatrix& a, const ZetMatrix& b, Fn fn)
{
    double* const elements = a.data();
    const double* const others = b.data();
    const std::size_t count = a.elementCount();
    for (std::size_t i = 0; i < count; ++i) {
        elements[i] = fn(elements[i], others[i]);
    }
}

/// The product of two matrices that have one. The loops run along the rows of \p b; each element is
/// still summed in the order of the inner index.
ZetMatrix product(const ZetMatrix& a, const ZetMatrix& b)
{
    ZetMatrix result = internal::zeroMatrix(a.rowCount(), b.columnCount());
    const std::size_t inner = a.columnCount();
    const std::size_t columns = b.columnCount();
    for (std::size_t r = 0; r < a.rowCount(); ++r) {
        double* const sums = result.data() + r * columns;
        for (std::size_t i = 0; i < inner; ++i) {
            const double factor = a.data()[r * inner + i];
            const double* const row = b.data() + i * columns;
            for (std::size_t c = 0; c < columns; ++c) {
                sums[c] += factor * row[c];
            }
        }
    }
    return result;
}

}  // namespace

ZetMatrix::ZetMatrix(unsigned short rowCount, unsigned short columnCount, double value)
    : m_rowCount(rowCount), m_columnCount(columnCount)
{
    if (elementCount() == 0) {
        return;
    }
    try {
        m_elements.reset(acquireElements(elementCount()));
        std::fill_n(data(), elementCount(), value);
    } catch (const std::bad_alloc&) {
        m_rowCount = 0;
        m_columnCount = 0;
    }
}

ZetMatrix::ZetMatrix(unsigned short rowCount, unsigned short columnCount, const double* data, ZetArrayOrder order)
{
    initialize(rowCount, columnCount, data, order);
}

ZetMatrix::ZetMatrix(unsigned short rowCount, unsigned short columnCount, const std::vector<double>& data,
                     ZetArrayOrder order)
{
    if (data.size() == std::size_t{rowCount} * columnCount) {
        initialize(rowCount, columnCount, data.data(), order);
    }
}

ZetMatrix::ZetMatrix(const ZetMatrix& other) : ZetObject(other)
{
    *this = other;
}

ZetMatrix::ZetMatrix(ZetMatrix&& other) noexcept
{
    swap(other);
}

ZetMatrix::~ZetMatrix() = default;

ZetMatrix& ZetMatrix::operator=(const ZetMatrix& other)
{
    if (this == &other) {
        return *this;
    }
    if (elementCount() != other.elementCount()) {
        m_elements.reset(other.isEmpty() ? nullptr : acquireElements(other.elementCount()));
    }
    m_rowCount = other.m_rowCount;
    m_columnCount = other.m_columnCount;
    std::copy_n(other.data(), elementCount(), data());
    return *this;
}

int ZetMatrix::initialize(unsigned short rowCount, unsigned short columnCount, const double* data, ZetArrayOrder order)
{
    const std::size_t rows = rowCount;
    const std::size_t columns = columnCount;
    const bool isKnownOrder = order == RowMajor || order == ColumnMajor;
    if (!data || rows * columns == 0 || !isKnownOrder) {
        return 1;
    }
    std::unique_ptr<double[]> elements;
    try {
        elements.reset(acquireElements(rows * columns));
    } catch (const std::bad_alloc&) {
        return 1;
    }
    if (order == RowMajor) {
        std::copy_n(data, rows * columns, elements.get());
    } else {
        for (std::size_t r = 0; r < rows; ++r) {
            for (std::size_t c = 0; c < columns; ++c) {
                elements[r * columns + c] = data[r + c * rows];
            }
        }
    }
    m_elements = std::move(elements);
    m_rowCount = rowCount;
    m_columnCount = columnCount;
    return 0;
}

ZetString ZetMatrix::className() const
{
    return L"ZetMatrix";
}

bool ZetMatrix::operator==(const ZetMatrix& other) const
{
    return haveEqualCounts(*this, other) && std::equal(data(), data() + elementCount(), other.data());
}

bool ZetMatrix::operator<(const ZetMatrix& other) const
{
    if (m_rowCount != other.m_rowCount) {
        return m_rowCount < other.m_rowCount;
    }
    if (m_columnCount != other.m_columnCount) {
        return m_columnCount < other.m_columnCount;
    }
    for (std::size_t i = 0; i < elementCount(); ++i) {
        if (m_elements[i] < other.m_elements[i]) {
            return true;
        }
    }
    return false;
}

ZetMatrix& ZetMatrix::operator=(double value)
{
    if (isEmpty()) {
        postMatrixError(L"Matrix is empty", __LINE__);
    }
    std::fill_n(data(), elementCount(), value);
    return *this;
}

ZetMatrix& ZetMatrix::operator+=(double value)
{
    combine(*this, value, std::plus<double>());
    return *this;
}

ZetMatrix& ZetMatrix::operator-=(double value)
{
    combine(*this, value, std::minus<double>());
    return *this;
}

ZetMatrix& ZetMatrix::operator*=(double value)
{
    combine(*this, value, std::multiplies<double>());
    return *this;
}

ZetMatrix ZetMatrix::operator+(double value) const
{
    ZetMatrix result = *this;
    result += value;
    return result;
}

ZetMatrix ZetMatrix::operator-(double value) const
{
    ZetMatrix result = *this;
    result -= value;
    return result;
}

ZetMatrix ZetMatrix::operator*(double value) const
{
    ZetMatrix result = *this;
    result *= value;
    return result;
}

ZetMatrix& ZetMatrix::operator+=(const ZetMatrix& other)
{
    if (canAdd(*this, other)) {
        combine(*this, other, std::plus<double>());
    }
    return *this;
}

ZetMatrix& ZetMatrix::operator-=(const ZetMatrix& other)
{
    if (canAdd(*this, other)) {
        combine(*this, other, std::minus<double>());
    }
    return *this;
}

ZetMatrix ZetMatrix::operator+(const ZetMatrix& other) const
{
    if (!canAdd(*this, other)) {
        return ZetMatrix();
    }
    ZetMatrix result = *this;
    combine(result, other, std::plus<double>());
    return result;
}

ZetMatrix ZetMatrix::operator-(const ZetMatrix& other) const
{
    if (!canAdd(*this, other)) {
        return ZetMatrix();
    }
    ZetMatrix result = *this;
    combine(result, other, std::minus<double>());
    return result;
}

ZetMatrix& ZetMatrix::operator*=(const ZetMatrix& other)
{
    if (canMultiply(*this, other)) {
        product(*this, other).swap(*this);
    }
    return *this;
}

ZetMatrix ZetMatrix::operator*(const ZetMatrix& other) const
{
    return canMultiply(*this, other) ? product(*this, other) : ZetMatrix();
}

void ZetMatrix::normalize()
{
    double sum = 0.0;
    for (std::size_t i = 0; i < elementCount(); ++i) {
        sum += m_elements[i];
    }
    if (sum > 0.0) {
        *this *= 1.0 / sum;
    }
}

void ZetMatrix::swap(ZetMatrix& other) noexcept
{
    std::swap(m_rowCount, other.m_rowCount);
    std::swap(m_columnCount, other.m_columnCount);
    m_elements.swap(other.m_elements);
}

ZetMatrix ZetMatrix::row(unsigned int index) const
{
    if (index >= m_rowCount) {
        return ZetMatrix();
    }
    ZetMatrix result(1, m_columnCount, 0.0);
    std::copy_n(data() + indexOf(index, 0), result.elementCount(), result.data());
    return result;
}

ZetMatrix ZetMatrix::column(unsigned int index) const
{
    if (index >= m_columnCount) {
        return ZetMatrix();
    }
    ZetMatrix result(m_rowCount, 1, 0.0);
    for (unsigned int r = 0; r < result.rowCount(); ++r) {
        result(r, 0) = (*this)(r, index);
    }
    return result;
}

ZetMatrix ZetMatrix::transpose() const
{
    return ZetMatrix(m_columnCount, m_rowCount, data(), ColumnMajor);
}

ZetMatrix ZetMatrix::diagonal() const
{
    if (isEmpty() || (m_rowCount != 1 && m_columnCount != 1)) {
        return ZetMatrix();
    }
    const unsigned short count = std::max(m_rowCount, m_columnCount);
    ZetMatrix result(count, count, 0.0);
    for (unsigned int i = 0; i < result.rowCount(); ++i) {
        result(i, i) = m_elements[i];
    }
    return result;
}

}  // namespace zet
