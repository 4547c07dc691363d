#pragma once

#include <cmath>
#include <cstddef>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace TA {

/// Two neighbouring entries of a row. Compilers do not pair maxima of doubles by themselves, because
/// they have to keep what a comparison with NaN does; here no NaN comes in.
#if defined(__SSE2__)
class Pair {
  public:
    explicit Pair(double both) : m_value(_mm_set1_pd(both)) {}
    explicit Pair(const double* two) : m_value(_mm_loadu_pd(two)) {}

    void store(double* two) const { _mm_storeu_pd(two, m_value); }
    double largest() const { return _mm_cvtsd_f64(_mm_max_sd(m_value, high())); }
    double sum() const { return _mm_cvtsd_f64(_mm_add_sd(m_value, high())); }
    Pair magnitude() const { return Pair(_mm_andnot_pd(_mm_set1_pd(-0.0), m_value)); }

    friend Pair operator+(Pair a, Pair b) { return Pair(_mm_add_pd(a.m_value, b.m_value)); }
    friend Pair operator-(Pair a, Pair b) { return Pair(_mm_sub_pd(a.m_value, b.m_value)); }
    friend Pair operator*(Pair a, Pair b) { return Pair(_mm_mul_pd(a.m_value, b.m_value)); }
    friend Pair larger(Pair a, Pair b) { return Pair(_mm_max_pd(a.m_value, b.m_value)); }

  private:
    explicit Pair(__m128d value) : m_value(value) {}
    __m128d high() const { return _mm_unpackhi_pd(m_value, m_value); }

    __m128d m_value;
};
#else
class Pair {
  public:
    explicit Pair(double both) : m_first(both), m_second(both) {}
    explicit Pair(const double* two) : m_first(two[0]), m_second(two[1]) {}

    void store(double* two) const {
        two[0] = m_first;
        two[1] = m_second;
    }
    double largest() const { return m_first > m_second ? m_first : m_second; }
    double sum() const { return m_first + m_second; }
    Pair magnitude() const { return Pair(std::abs(m_first), std::abs(m_second)); }

    friend Pair operator+(Pair a, Pair b) { return Pair(a.m_first + b.m_first, a.m_second + b.m_second); }
    friend Pair operator-(Pair a, Pair b) { return Pair(a.m_first - b.m_first, a.m_second - b.m_second); }
    friend Pair operator*(Pair a, Pair b) { return Pair(a.m_first * b.m_first, a.m_second * b.m_second); }
    friend Pair larger(Pair a, Pair b) {
        return Pair(a.m_first > b.m_first ? a.m_first : b.m_first,
                    a.m_second > b.m_second ? a.m_second : b.m_second);
    }

  private:
    Pair(double first, double second) : m_first(first), m_second(second) {}

    double m_first;
    double m_second;
};
#endif

/// Rows of n entries, n even.
inline double dot(const double* a, const double* b, std::size_t n) {
    Pair sum(0.0);
    for (std::size_t k = 0; k < n; k += 2)
        sum = sum + Pair(a + k) * Pair(b + k);
    return sum.sum();
}

inline double distance(const double* a, const double* b, std::size_t n) {
    Pair sum(0.0);
    for (std::size_t k = 0; k < n; k += 2) {
        const Pair difference = Pair(b + k) - Pair(a + k);
        sum = sum + difference * difference;
    }
    return std::sqrt(sum.sum());
}

}  // namespace TA
