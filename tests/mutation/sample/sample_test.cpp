#include "source/limit.h"
#include "source/steps.h"

#include <gtest/gtest.h>

TEST(Limited, ValueBelowBecomesTheLowerLimit) {
  EXPECT_EQ(0, limited(-3, 0, 9));
}

// Of the upper limit there is no test.
TEST(Limited, ValueBetweenStays) {
  EXPECT_EQ(4, limited(4, 0, 9));
}

TEST(InSteps, RestIsCutOff) {
  EXPECT_EQ(15, inSteps(17));
}

TEST(MoveBack, PlaceIsMoved) {
  int place = 5;
  moveBack(place, 3);
  EXPECT_EQ(2, place);
  moveBack(place, 8);
  EXPECT_EQ(-6, place);
}

TEST(MoveBack, NoneIsNoMovement) {
  int place = 5;
  moveBack(place, 7);
  EXPECT_EQ(5, place);
}

TEST(Distance, HasASign) {
  EXPECT_EQ(3, distance(2, 5));
  EXPECT_EQ(-3, wayBack(2, 5));
}

TEST(Size, IsTheNumberOfCharacters) {
  const char text[] = "abc";
  EXPECT_EQ(3, size(text, text + 3));
}
