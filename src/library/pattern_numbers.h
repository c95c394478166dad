// The numbers of both pattern forms: their places in a form's values and in a block's record.
#pragma once

namespace morva {

// In the order of the fields.
enum CircularNumber : int {
  kCircularSize,
  kCircularWidth,
  kCircularX,
  kCircularY,
  kCircularDiameter,
  kCircularQuantity,
  kCircularStart,
  kCircularTurn,
  kCircularDepth,
  kCircularFeed,
  kCircularSafeZ,
};
inline constexpr int kCircularNumbers = 11;
enum GridNumber : int {
  kGridSize,
  kGridWidth,
  kGridTurn,
  kGridX,
  kGridY,
  kGridColumns,
  kGridRows,
  kGridStepX,
  kGridStepY,
  kGridDepth,
  kGridFeed,
  kGridSafeZ,
};
inline constexpr int kGridNumbers = 12;
// The directions of a grid in a drawing, which no record holds.
inline constexpr int kGridDirectionX = kGridNumbers;
inline constexpr int kGridDirectionY = kGridNumbers + 1;

}  // namespace morva
