// Singular value decompositions with both factors, and least squares, beside LAPACK's dgesvd (where it
// is installed) and Eigen's JacobiSVD. All write into memory that exists already.

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <Eigen/SVD>

#include <zet/ZetMatrix>

#ifdef ZET_BENCH_HAS_LAPACKE
#include <lapacke.h>
#endif

namespace bench {
namespace {

using zet::ZetMatrix;

ZetMatrix randomMatrix(unsigned short rows, unsigned short columns, unsigned int seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    ZetMatrix result(rows, columns, 0.0);
    std::generate_n(result.data(), result.elementCount(), [&] { return uniform(random); });
    return result;
}

/// Measures \p work, which gives something to keep.
template <class Work>
void row(const std::string& name, Work work)
{
    benchmark::RegisterBenchmark(name.c_str(), [work](benchmark::State& state) mutable {
        for (auto _ : state) {
            benchmark::DoNotOptimize(work());
        }
    });
}

/// The matrix column after column, as the others hold it.
Eigen::MatrixXd columnMajor(const ZetMatrix& matrix)
{
    using RowMajor = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
    return Eigen::Map<const RowMajor>(matrix.data(), matrix.rowCount(), matrix.columnCount());
}

#ifdef ZET_BENCH_HAS_LAPACKE

/// dgesvd with its work space taken beforehand.
class Lapack
{
public:
    explicit Lapack(const Eigen::MatrixXd& matrix)
        : m_matrix(matrix),
          m_copy(matrix),
          m_u(matrix.rows(), matrix.cols()),
          m_vTransposed(matrix.cols(), matrix.cols()),
          m_s(matrix.cols())
    {
        double size = 0.0;
        decompose(&size, -1);
        m_work.resize(static_cast<std::size_t>(size));
    }

    double decompose()
    {
        m_copy = m_matrix;
        decompose(m_work.data(), static_cast<lapack_int>(m_work.size()));
        return m_s[0];
    }

    double leastSquares(const Eigen::VectorXd& b)
    {
        decompose();
        const double cut = m_s[0] * 1e-12;
        const Eigen::VectorXd inverted = m_s.unaryExpr([cut](double s) { return s > cut ? 1.0 / s : 0.0; });
        const Eigen::VectorXd x = m_vTransposed.transpose() * inverted.cwiseProduct(m_u.transpose() * b);
        return x[0];
    }

private:
    void decompose(double* work, lapack_int size)
    {
        const auto m = static_cast<lapack_int>(m_matrix.rows());
        const auto n = static_cast<lapack_int>(m_matrix.cols());
        LAPACKE_dgesvd_work(LAPACK_COL_MAJOR, 'S', 'S', m, n, m_copy.data(), m, m_s.data(), m_u.data(), m,
                            m_vTransposed.data(), n, work, size);
    }

    Eigen::MatrixXd m_matrix;
    Eigen::MatrixXd m_copy;
    Eigen::MatrixXd m_u;
    Eigen::MatrixXd m_vTransposed;
    Eigen::VectorXd m_s;
    std::vector<double> m_work;
};

#endif

void decompositionRows(unsigned short order)
{
    const std::string name = "svd " + std::to_string(order);
    const ZetMatrix matrix = randomMatrix(order, order, order);
    row(name + "/zet", [matrix, u = ZetMatrix(), s = std::vector<double>(), v = ZetMatrix()]() mutable {
        matrix.singularValueDecomposition(u, s, v, true, true, true);
        return s[0];
    });
#ifdef ZET_BENCH_HAS_LAPACKE
    row(name + "/dgesvd", [lapack = Lapack(columnMajor(matrix))]() mutable { return lapack.decompose(); });
#endif
    row(name + "/JacobiSVD", [a = columnMajor(matrix), svd = Eigen::JacobiSVD<Eigen::MatrixXd>()]() mutable {
        svd.compute(a, Eigen::ComputeThinU | Eigen::ComputeThinV);
        return svd.singularValues()[0];
    });
}

void leastSquaresRows(unsigned short rows, unsigned short columns)
{
    const std::string name = "least squares " + std::to_string(rows) + " x " + std::to_string(columns);
    const ZetMatrix matrix = randomMatrix(rows, columns, 1);
    const ZetMatrix b = randomMatrix(rows, 1, 2);
    row(name + "/zet", [matrix, b] { return matrix.leastSquares(b)(0, 0); });
    const Eigen::VectorXd right = columnMajor(b);
#ifdef ZET_BENCH_HAS_LAPACKE
    row(name + "/dgesvd",
        [lapack = Lapack(columnMajor(matrix)), right]() mutable { return lapack.leastSquares(right); });
#endif
    row(name + "/JacobiSVD", [a = columnMajor(matrix), right, svd = Eigen::JacobiSVD<Eigen::MatrixXd>()]() mutable {
        svd.compute(a, Eigen::ComputeThinU | Eigen::ComputeThinV);
        const Eigen::VectorXd x = svd.solve(right);
        return x[0];
    });
}

[[maybe_unused]] const bool s_registered = [] {
    decompositionRows(4);
    decompositionRows(16);
    decompositionRows(64);
    decompositionRows(200);
    leastSquaresRows(3000, 10);
    return true;
}();

}  // namespace
}  // namespace bench
