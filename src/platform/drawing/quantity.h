// SPDX-License-Identifier: MIT
#pragma once

namespace sixtrace {

/// A number with its unit. Quantities of different units can neither be added nor compared, and a plain number never
/// becomes a quantity by itself, so that a mix-up of units does not compile. As fast as the plain number.
template<typename Unit>
class Quantity {
public:
    constexpr Quantity() = default;
    constexpr explicit Quantity(double number)
        : m_number(number) {}

    /// The plain number, for arithmetic that leaves the unit.
    [[nodiscard]] constexpr double number() const { return m_number; }

    constexpr Quantity& operator+=(Quantity other) { return *this = *this + other; }
    constexpr Quantity& operator-=(Quantity other) { return *this = *this - other; }

    friend constexpr Quantity operator+(Quantity a, Quantity b) { return Quantity(a.m_number + b.m_number); }
    friend constexpr Quantity operator-(Quantity a, Quantity b) { return Quantity(a.m_number - b.m_number); }
    friend constexpr Quantity operator-(Quantity a) { return Quantity(-a.m_number); }
    friend constexpr Quantity operator*(Quantity a, double factor) { return Quantity(a.m_number * factor); }
    friend constexpr Quantity operator*(double factor, Quantity a) { return Quantity(factor * a.m_number); }
    friend constexpr Quantity operator/(Quantity a, double divisor) { return Quantity(a.m_number / divisor); }
    /// How many times the one is the other.
    friend constexpr double operator/(Quantity a, Quantity b) { return a.m_number / b.m_number; }
    friend constexpr bool operator==(Quantity a, Quantity b) { return a.m_number == b.m_number; }
    friend constexpr bool operator<(Quantity a, Quantity b) { return a.m_number < b.m_number; }
    friend constexpr bool operator>(Quantity a, Quantity b) { return a.m_number > b.m_number; }
    friend constexpr bool operator<=(Quantity a, Quantity b) { return a.m_number <= b.m_number; }
    friend constexpr bool operator>=(Quantity a, Quantity b) { return a.m_number >= b.m_number; }

private:
    double m_number = 0;
};

} // namespace sixtrace
