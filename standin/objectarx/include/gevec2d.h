/// Vector in a plane. Any thread.
#ifndef STANDIN_GEVEC2D_H
#define STANDIN_GEVEC2D_H

class AcGeVector2d {
 public:
  constexpr AcGeVector2d() = default;
  constexpr AcGeVector2d(double xIn, double yIn) : x(xIn), y(yIn) {}

  constexpr AcGeVector2d operator*(double s) const { return {x * s, y * s}; }
  friend constexpr AcGeVector2d operator*(double s, const AcGeVector2d& v) { return v * s; }
  constexpr AcGeVector2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
  constexpr AcGeVector2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
  constexpr AcGeVector2d operator-() const { return {-x, -y}; }

  double x = 0;
  double y = 0;
};

#endif
