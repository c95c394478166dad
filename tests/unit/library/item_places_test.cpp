// Places worked out by hand from quarter turns, whose sines are exact.
#include "library/item_places.h"

#include <gtest/gtest.h>

namespace morva {
namespace {

TEST(PlaceOnCircle, StartsAtTheStartAngleAndRunsCounterClockwise) {
  const CirclePlaces circle{1, 2, 4, 90, 4};
  const ItemPlace first = PlaceOnCircle(circle, 0);
  EXPECT_EQ(first.x, 1);  // straight above the centre
  EXPECT_NEAR(first.y, 4, 2e-7);
  EXPECT_EQ(first.angle, 90);
  const ItemPlace second = PlaceOnCircle(circle, 1);
  EXPECT_NEAR(second.x, -1, 2e-7);
  EXPECT_EQ(second.angle, 180);
}

TEST(PlaceOnCircle, DoesNotReduceTheAngle) {
  EXPECT_EQ(PlaceOnCircle({0, 0, 4, 180, 4}, 3).angle, 450);
}

TEST(PlaceInGrid, FillsRowByRow) {
  const GridPlaces grid{1, 2, 3, 0.5, 2};
  EXPECT_EQ(PlaceInGrid(grid, 0).x, 1);
  EXPECT_EQ(PlaceInGrid(grid, 2).x, 2);
  EXPECT_EQ(PlaceInGrid(grid, 2).y, 2);
  EXPECT_EQ(PlaceInGrid(grid, 3).x, 1);
  EXPECT_EQ(PlaceInGrid(grid, 3).y, 4);
}

TEST(PlaceInGrid, RunsAlongItsDirections) {
  const GridPlaces grid{0, 0, 2, 3, 5, 90, 180};
  EXPECT_EQ(PlaceInGrid(grid, 1).x, 0);
  EXPECT_EQ(PlaceInGrid(grid, 1).y, 3);
  EXPECT_EQ(PlaceInGrid(grid, 2).x, -5);
  EXPECT_EQ(PlaceInGrid(grid, 2).y, 0);
}

TEST(ItemTurn, FollowsTheCircleUnlessItIsFixed) {
  EXPECT_EQ(ItemTurn(Orientation::Fixed, 10, 120), 10);
  EXPECT_EQ(ItemTurn(Orientation::Radial, 10, 120), 130);
  EXPECT_EQ(ItemTurn(Orientation::Tangential, 10, 120), 220);
}

}  // namespace
}  // namespace morva
