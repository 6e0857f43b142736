#include "support/ZetEigenLoops"

#include <complex>
#include <type_traits>

#include <Eigen/Core>

namespace bench {

template <class T>
void eigenRow(EigenRow row, const void* a, const void* b, double* out, std::size_t n)
{
    using W = std::conditional_t<std::is_same_v<T, std::complex<double>>, T, double>;
    const auto size = static_cast<Eigen::Index>(n);
    const Eigen::Map<const Eigen::Array<T, Eigen::Dynamic, 1>> x(static_cast<const T*>(a), size);
    const Eigen::Map<const Eigen::Array<T, Eigen::Dynamic, 1>> y(static_cast<const T*>(b), size);
    Eigen::Map<Eigen::Array<W, Eigen::Dynamic, 1>> z(reinterpret_cast<W*>(out), size);
    switch (row) {
        case EigenRow::add:
            z = x.template cast<W>() + y.template cast<W>();
            break;
        case EigenRow::multiply:
            z = x.template cast<W>() * y.template cast<W>();
            break;
        case EigenRow::divide:
            z = x.template cast<W>() / y.template cast<W>();
            break;
        case EigenRow::multiplyNumber:
            z = x.template cast<W>() * 1.5;
            break;
        case EigenRow::clip:
            if constexpr (std::is_same_v<W, double>) {
                z = x.template cast<W>().max(10.0).min(200.0);
            }
            break;
    }
}

template <class T>
double eigenSum(const void* a, std::size_t n)
{
    return Eigen::Map<const Eigen::Array<T, Eigen::Dynamic, 1>>(static_cast<const T*>(a), static_cast<Eigen::Index>(n))
        .template cast<double>()
        .sum();
}

template <class T>
double eigenMin(const void* a, std::size_t n)
{
    return static_cast<double>(
        Eigen::Map<const Eigen::Array<T, Eigen::Dynamic, 1>>(static_cast<const T*>(a), static_cast<Eigen::Index>(n))
            .minCoeff());
}

template <class T>
double eigenMax(const void* a, std::size_t n)
{
    return static_cast<double>(
        Eigen::Map<const Eigen::Array<T, Eigen::Dynamic, 1>>(static_cast<const T*>(a), static_cast<Eigen::Index>(n))
            .maxCoeff());
}

#define BENCH_EIGEN(T)                                                                   \
    template void eigenRow<T>(EigenRow, const void*, const void*, double*, std::size_t); \
    template double eigenSum<T>(const void*, std::size_t);                               \
    template double eigenMin<T>(const void*, std::size_t);                               \
    template double eigenMax<T>(const void*, std::size_t);

BENCH_EIGEN(unsigned char)
BENCH_EIGEN(short)
BENCH_EIGEN(unsigned short)
BENCH_EIGEN(float)
BENCH_EIGEN(double)
template void eigenRow<std::complex<double>>(EigenRow, const void*, const void*, double*, std::size_t);

}  // namespace bench
