// Exact musical time. A fraction is always in lowest terms with a denominator above zero.
#pragma once

#include <compare>
#include <cstdint>
#include <stdexcept>

namespace kavo::sound {

__extension__ typedef __int128 int128;

// Time that is divided more finely than a Fraction can hold.
class FractionOverflow : public std::overflow_error {
public:
  FractionOverflow() : std::overflow_error("time is divided too finely") {}
};

class Fraction {
public:
  // The sequencer multiplies numerators, denominators and ticks in 128 bits; these two bounds
  // are what keeps the products inside.
  static constexpr int64_t largest_denominator = (int64_t{1} << 31) - 1;
  static constexpr int64_t largest_numerator = int64_t{1} << 62;

  constexpr Fraction() = default;
  constexpr Fraction(int64_t whole) : numerator_(whole) {} // NOLINT(*-explicit-*): 1 is 1/1
  Fraction(int64_t numerator, int64_t denominator) { *this = reduced(numerator, denominator); }

  constexpr int64_t numerator() const { return numerator_; }
  constexpr int64_t denominator() const { return denominator_; }

  constexpr int64_t floor() const {
    const int64_t quotient = numerator_ / denominator_;
    return numerator_ % denominator_ < 0 ? quotient - 1 : quotient;
  }
  constexpr int64_t ceiling() const {
    const int64_t below = floor();
    return numerator_ == below * denominator_ ? below : below + 1;
  }

  friend Fraction operator+(const Fraction& a, const Fraction& b) {
    return reduced(int128{a.numerator_} * b.denominator_ + int128{b.numerator_} * a.denominator_,
                   int128{a.denominator_} * b.denominator_);
  }
  friend Fraction operator-(const Fraction& a, const Fraction& b) {
    return reduced(int128{a.numerator_} * b.denominator_ - int128{b.numerator_} * a.denominator_,
                   int128{a.denominator_} * b.denominator_);
  }
  friend Fraction operator*(const Fraction& a, const Fraction& b) {
    return reduced(int128{a.numerator_} * b.numerator_, int128{a.denominator_} * b.denominator_);
  }
  friend Fraction operator/(const Fraction& a, const Fraction& b) {
    return reduced(int128{a.numerator_} * b.denominator_, int128{a.denominator_} * b.numerator_);
  }
  friend constexpr bool operator==(const Fraction&, const Fraction&) = default;
  friend constexpr std::strong_ordering operator<=>(const Fraction& a, const Fraction& b) {
    return int128{a.numerator_} * b.denominator_ <=> int128{b.numerator_} * a.denominator_;
  }

private:
  static Fraction reduced(int128 numerator, int128 denominator);

  int64_t numerator_ = 0;
  int64_t denominator_ = 1;
};

} // namespace kavo::sound
