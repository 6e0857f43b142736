#include "quantity/ZetSingularValues"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <utility>

#include "core/ZetUnitInit"

namespace zet {
namespace internal {
namespace {

using Index = std::ptrdiff_t;

/// How many partial sums a scalar product has, so that they can be taken at the same time.
constexpr Index kLanes = 8;

constexpr int kMaxSteps = 30;

double scalarProduct(const double* x, const double* y, Index count)
{
    double total = 0.0;
    Index i = 0;
    if (count >= kLanes) {
        double sums[kLanes] = {};
        for (; i + kLanes <= count; i += kLanes) {
            for (Index lane = 0; lane < kLanes; ++lane) {
                sums[lane] += x[i + lane] * y[i + lane];
            }
        }
        for (const double sum : sums) {
            total += sum;
        }
    }
    for (; i < count; ++i) {
        total += x[i] * y[i];
    }
    return total;
}

/// y += factor * x
void addMultiple(double factor, const double* __restrict x, double* __restrict y, Index count)
{
    for (Index i = 0; i < count; ++i) {
        y[i] += factor * x[i];
    }
}

void turn(double* __restrict x, double* __restrict y, const ZetSingularValues::Rotation& rotation, Index count)
{
    const double cosine = rotation.cosine;
    const double sine = rotation.sine;
    for (Index i = 0; i < count; ++i) {
        const double turned = cosine * x[i] + sine * y[i];
        y[i] = cosine * y[i] - sine * x[i];
        x[i] = turned;
    }
}

/// The length of a vector, which neither overflows nor loses digits on the way.
double length(const double* x, Index count)
{
    return std::accumulate(x, x + count, 0.0, [](double sum, double value) { return std::hypot(sum, value); });
}

/// Turns \p x into the vector of its Householder reflection, with 1 + |x0| / length in front.
/// Returns  what the reflection makes of x0; 0 when \p x is 0, and then there is none.
double makeReflection(double* x, Index count)
{
    double norm = length(x, count);
    if (norm == 0.0) {
        return norm;
    }
    if (x[0] < 0.0) {
        norm = -norm;
    }
    for (Index i = 0; i < count; ++i) {
        x[i] /= norm;
    }
    x[0] += 1.0;
    return -norm;
}

/// Reflects \p y by the vector \p reflection.
void reflect(const double* reflection, double* y, Index count)
{
    addMultiple(-scalarProduct(reflection, y, count) / reflection[0], reflection, y, count);
}

bool isNegligible(double value, double beside)
{
    return beside + std::abs(value) == beside;
}

/// The elements of a matrix, column after column.
std::vector<double> transposed(const ZetMatrix& matrix)
{
    const std::size_t rows = matrix.rowCount();
    const std::size_t columns = matrix.columnCount();
    std::vector<double> result(rows * columns);
    for (std::size_t r = 0; r < rows; ++r) {
        for (std::size_t c = 0; c < columns; ++c) {
            result[c * rows + r] = matrix.data()[r * columns + c];
        }
    }
    return result;
}

}  // namespace

ZetSingularValues::Rotation::Rotation(double f, double g) : length(std::hypot(f, g))
{
    if (length != 0.0) {
        cosine = f / length;
        sine = g / length;
    }
}

ZetSingularValues::ZetSingularValues(const ZetMatrix& matrix, bool wantU, bool wantV) : ZetSingularValues(matrix, wantV)
{
    if (wantU) {
        m_uLength = m_m;
        m_u.resize(static_cast<std::size_t>(m_uColumns * m_uLength));
    }
}

ZetSingularValues::ZetSingularValues(const ZetMatrix& matrix, const ZetMatrix& b) : ZetSingularValues(matrix, true)
{
    m_uLength = b.columnCount();
    m_b = transposed(b);
}

ZetSingularValues::ZetSingularValues(const ZetMatrix& matrix, bool wantV)
    : m_m(matrix.rowCount()),
      m_n(matrix.columnCount()),
      m_uColumns(std::min(m_m, m_n)),
      m_order(std::min(m_n, m_m + 1)),
      m_leftSteps(std::min(m_m - 1, m_n)),
      m_rightSteps(std::max(Index{0}, std::min(m_n - 2, m_m))),
      m_wantV(wantV),
      m_a(transposed(matrix)),
      m_v(wantV ? static_cast<std::size_t>(m_n * m_n) : 0),
      m_s(static_cast<std::size_t>(m_order)),
      m_e(static_cast<std::size_t>(m_n)),
      m_work(static_cast<std::size_t>(m_m))
{}

int ZetSingularValues::decompose()
{
    makeBidiagonal();
    finishBidiagonal();
    if (!m_b.empty()) {
        takeReflectedB();
    } else if (!m_u.empty()) {
        generateU();
    }
    if (m_wantV) {
        generateV();
    }
    int steps = 0;
    for (Index last = m_order - 1; last >= 0;) {
        if (steps == kMaxSteps) {
            return static_cast<int>(last);
        }
        const Task task = nextTask(last);
        switch (task.kind) {
            case Task::Deflate:
                deflate(task.first, last);
                break;
            case Task::Split:
                split(task.first, last);
                break;
            case Task::Step:
                step(task.first, last);
                ++steps;
                break;
            case Task::Converged:
                settle(task.first);
                steps = 0;
                --last;
                break;
        }
    }
    m_s.resize(static_cast<std::size_t>(m_uColumns));
    return static_cast<int>(m_uColumns);
}

void ZetSingularValues::makeBidiagonal()
{
    for (Index k = 0; k < std::max(m_leftSteps, m_rightSteps); ++k) {
        if (k < m_leftSteps) {
            reflectColumns(k);
        }
        for (Index j = k + 1; j < m_n; ++j) {
            e(j) = a(j)[k];
        }
        if (k < m_rightSteps) {
            reflectRow(k);
        }
    }
}

/// Clears column k below the diagonal.
void ZetSingularValues::reflectColumns(Index k)
{
    const Index count = m_m - k;
    s(k) = makeReflection(a(k) + k, count);
    if (s(k) != 0.0) {
        for (Index j = k + 1; j < m_n; ++j) {
            reflect(a(k) + k, a(j) + k, count);
        }
        for (Index offset = k; offset < std::ssize(m_b); offset += m_m) {
            reflect(a(k) + k, m_b.data() + offset, count);
        }
    }
    if (!m_u.empty()) {
        std::copy_n(a(k) + k, count, u(k) + k);
    }
}

/// Clears row k right of the element beside the diagonal.
void ZetSingularValues::reflectRow(Index k)
{
    const Index next = k + 1;
    e(k) = makeReflection(&e(next), m_n - next);
    if (next < m_m && e(k) != 0.0) {
        double* const work = m_work.data() + next;
        const Index count = m_m - next;
        std::fill_n(work, count, 0.0);
        for (Index j = next; j < m_n; ++j) {
            addMultiple(e(j), a(j) + next, work, count);
        }
        for (Index j = next; j < m_n; ++j) {
            addMultiple(-e(j) / e(next), work, a(j) + next, count);
        }
    }
    if (m_wantV) {
        std::copy_n(&e(next), m_n - next, v(k) + next);
    }
}

/// Takes over what no reflection has reached. What lies beyond the matrix is 0.
void ZetSingularValues::finishBidiagonal()
{
    if (m_leftSteps < m_n) {
        s(m_leftSteps) = a(m_leftSteps)[m_leftSteps];
    }
    if (m_m < m_order) {
        s(m_order - 1) = 0.0;
    }
    if (m_rightSteps + 1 < m_order) {
        e(m_rightSteps) = a(m_order - 1)[m_rightSteps];
    }
    e(m_order - 1) = 0.0;
}

/// The rows of the reflected right sides that U has columns for take the place of those.
void ZetSingularValues::takeReflectedB()
{
    m_u.resize(static_cast<std::size_t>(m_uColumns * m_uLength));
    for (Index k = 0; k < m_uColumns; ++k) {
        for (Index j = 0; j < m_uLength; ++j) {
            u(k)[j] = m_b[static_cast<std::size_t>(j * m_m + k)];
        }
    }
}

void ZetSingularValues::generateU()
{
    for (Index k = m_leftSteps; k < m_uColumns; ++k) {
        u(k)[k] = 1.0;
    }
    for (Index k = m_leftSteps - 1; k >= 0; --k) {
        double* const column = u(k) + k;
        const Index count = m_m - k;
        if (s(k) == 0.0) {
            std::fill_n(column, count, 0.0);
            *column = 1.0;
            continue;
        }
        for (Index j = k + 1; j < m_uColumns; ++j) {
            reflect(column, u(j) + k, count);
        }
        std::transform(column, column + count, column, std::negate<double>());
        *column += 1.0;
    }
}

void ZetSingularValues::generateV()
{
    for (Index k = m_n - 1; k >= 0; --k) {
        const Index next = k + 1;
        if (k < m_rightSteps && e(k) != 0.0) {
            for (Index j = next; j < m_n; ++j) {
                reflect(v(k) + next, v(j) + next, m_n - next);
            }
        }
        std::fill_n(v(k), m_n, 0.0);
        v(k)[k] = 1.0;
    }
}

/// Looks at the rows up to \p last. A value is negligible when adding it to its neighbours changes
/// nothing; it becomes 0.
ZetSingularValues::Task ZetSingularValues::nextTask(Index last)
{
    Index before = last - 1;
    for (; before >= 0; --before) {
        if (isNegligible(e(before), std::abs(s(before)) + std::abs(s(before + 1)))) {
            e(before) = 0.0;
            break;
        }
    }
    const Index first = before + 1;
    if (first == last) {
        return {Task::Converged, last};
    }
    for (Index i = last; i >= first; --i) {
        const double beside = (i != last ? std::abs(e(i)) : 0.0) + (i != first ? std::abs(e(i - 1)) : 0.0);
        if (isNegligible(s(i), beside)) {
            s(i) = 0.0;
            return i == last ? Task{Task::Deflate, first} : Task{Task::Split, i + 1};
        }
    }
    return {Task::Step, first};
}

/// The value at \p last is 0: turns the element above it away, up to \p first.
void ZetSingularValues::deflate(Index first, Index last)
{
    double f = e(last - 1);
    e(last - 1) = 0.0;
    for (Index j = last - 1; j >= first; --j) {
        const Rotation rotation(s(j), f);
        s(j) = rotation.length;
        if (j != first) {
            f = -rotation.sine * e(j - 1);
            e(j - 1) *= rotation.cosine;
        }
        turnV(j, last, rotation);
    }
}

/// The value in front of \p first is 0: turns the element beside it away, down to \p last.
void ZetSingularValues::split(Index first, Index last)
{
    const Index zero = first - 1;
    double f = e(zero);
    e(zero) = 0.0;
    for (Index j = first; j <= last; ++j) {
        const Rotation rotation(s(j), f);
        s(j) = rotation.length;
        f = -rotation.sine * e(j);
        e(j) *= rotation.cosine;
        turnU(j, zero, rotation);
    }
}

/// One implicit QR step over the rows \p first to \p last.
void ZetSingularValues::step(Index first, Index last)
{
    const double scale = std::max(
        {std::abs(s(last)), std::abs(s(last - 1)), std::abs(e(last - 1)), std::abs(s(first)), std::abs(e(first))});
    const double sLast = s(last) / scale;
    const double sFirst = s(first) / scale;
    double f = (sFirst + sLast) * (sFirst - sLast) + shiftOf(last, scale);
    double g = sFirst * (e(first) / scale);
    for (Index j = first; j < last; ++j) {
        const Rotation right(f, g);
        if (j != first) {
            e(j - 1) = right.length;
        }
        f = right.cosine * s(j) + right.sine * e(j);
        e(j) = right.cosine * e(j) - right.sine * s(j);
        g = right.sine * s(j + 1);
        s(j + 1) *= right.cosine;
        turnV(j, j + 1, right);

        const Rotation left(f, g);
        s(j) = left.length;
        f = left.cosine * e(j) + left.sine * s(j + 1);
        s(j + 1) = left.cosine * s(j + 1) - left.sine * e(j);
        g = left.sine * e(j + 1);
        e(j + 1) *= left.cosine;
        turnU(j, j + 1, left);
    }
    e(last - 1) = f;
}

/// The shift of a step, from the last two rows.
double ZetSingularValues::shiftOf(Index last, double scale)
{
    const double sLast = s(last) / scale;
    const double sBefore = s(last - 1) / scale;
    const double eBefore = e(last - 1) / scale;
    const double b = ((sBefore + sLast) * (sBefore - sLast) + eBefore * eBefore) / 2.0;
    const double c = (sLast * eBefore) * (sLast * eBefore);
    if (b == 0.0 && c == 0.0) {
        return 0.0;
    }
    const double root = std::sqrt(b * b + c);
    return c / (b + (b < 0.0 ? -root : root));
}

/// Makes a value that has converged positive, and brings it to its place among those behind it.
void ZetSingularValues::settle(Index index)
{
    if (s(index) < 0.0) {
        s(index) = -s(index);
        if (m_wantV) {
            std::transform(v(index), v(index) + m_n, v(index), std::negate<double>());
        }
    }
    for (Index i = index; i + 1 < m_order && s(i) < s(i + 1); ++i) {
        std::swap(s(i), s(i + 1));
        if (m_wantV) {
            std::swap_ranges(v(i), v(i) + m_n, v(i + 1));
        }
        if (i + 1 < m_uColumns) {
            std::swap_ranges(u(i), u(i) + m_uLength, u(i + 1));
        }
    }
}

/// Turns two columns of U. The bidiagonal of a wide matrix has one row more than U has columns: what
/// would turn with that row stays.
void ZetSingularValues::turnU(Index x, Index y, const Rotation& rotation)
{
    if (std::max(x, y) < m_uColumns) {
        turn(u(x), u(y), rotation, m_uLength);
    }
}

void ZetSingularValues::turnV(Index x, Index y, const Rotation& rotation)
{
    if (m_wantV) {
        turn(v(x), v(y), rotation, m_n);
    }
}

void ZetSingularValues::store(const std::vector<double>& columns, Index columnCount, ZetMatrix& target)
{
    const Index rowCount = target.rowCount();
    const Index stride = target.columnCount();
    for (Index r = 0; r < rowCount; ++r) {
        double* const row = target.data() + r * stride;
        for (Index c = 0; c < columnCount; ++c) {
            row[c] = columns[static_cast<std::size_t>(c * rowCount + r)];
        }
    }
}

}  // namespace internal
}  // namespace zet
