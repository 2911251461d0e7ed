/// Tolerance of geometric comparisons.
#ifndef STANDIN_GETOL_H
#define STANDIN_GETOL_H

/// 48 bytes.
class AcGeTol {
 public:
  constexpr AcGeTol() = default;

  constexpr double equalPoint() const { return mEqualPoint; }
  constexpr double equalVector() const { return mEqualVector; }

 protected:
  double mEqualPoint = 1e-10;
  double mEqualVector = 1e-10;
  double mReserved[3] = {};
  int mReservedCount = 0;
};

#endif
