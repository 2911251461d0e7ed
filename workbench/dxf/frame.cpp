#include "workbench/dxf/frame.h"

#include <cassert>
#include <cmath>

namespace workbench {
namespace {

constexpr double kPi = 3.14159265358979323846;
// The format fixes this value. A "better" tolerance would turn the frames of entities that other programs
// wrote.
constexpr double kNearWorldZ = 1.0 / 64;

// The frame's axes are the columns, so the matrix maps frame coordinates to the world.
void setColumn(AcGeMatrix3d& matrix, int column, const AcGeVector3d& v) {
  assert(column >= 0 && column <= 2 && "a vector is one of the first three columns");
  matrix.entry[0][column] = v.x;
  matrix.entry[1][column] = v.y;
  matrix.entry[2][column] = v.z;
}

}  // namespace

AcGeMatrix3d DxfFrame::matrix() const {
  AcGeMatrix3d result;
  setColumn(result, 0, x);
  setColumn(result, 1, y);
  setColumn(result, 2, z);
  return result;
}

DxfFrame dxfFrame(const AcGeVector3d& normal) {
  // Near the world's z axis the product with it would lose all its digits. The sign of z does not matter.
  const bool isNearWorldZ = std::abs(normal.x) < kNearWorldZ && std::abs(normal.y) < kNearWorldZ;
  DxfFrame frame;
  frame.z = normal;
  // The order of the factors gives a right-handed frame. Swapped, arcs would run clockwise.
  frame.x = (isNearWorldZ ? AcGeVector3d{0, 1, 0} : AcGeVector3d{0, 0, 1}).crossProduct(normal).normalize();
  // Both factors are unit vectors at right angles; normalising only removes the rounding.
  frame.y = normal.crossProduct(frame.x).normalize();
  return frame;
}

AcGeMatrix3d scaling(double x, double y, double z) {
  AcGeMatrix3d result;
  result.entry[0][0] = x;
  result.entry[1][1] = y;
  result.entry[2][2] = z;
  return result;
}

double radians(double degrees) {
  return degrees * (kPi / 180);
}

}  // namespace workbench
