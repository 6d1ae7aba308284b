#pragma once

// One section of the tour per family, each in its own tour_<family>.cpp.
namespace ZelvorTour {
void BinaryTour();
void CollectionsTour();
void CellFormatTour();
void CalendarTour();
void RelativeTimeTour();
void DecimalTour();
void ScheduleTour();
void VariantTour();
// The README's code, checked against what its comments say.
void ReadmeTour();
}  // namespace ZelvorTour
