// A short tour of the library, built against the installed package: one section per
// family, in the order a newcomer meets them.
#include "Tour.h"

int main() {
    ZelvorTour::BinaryTour();
    ZelvorTour::CollectionsTour();
    ZelvorTour::CellFormatTour();
    ZelvorTour::CalendarTour();
    ZelvorTour::RelativeTimeTour();
    ZelvorTour::ScheduleTour();
    ZelvorTour::DecimalTour();
    ZelvorTour::VariantTour();
    ZelvorTour::ReadmeTour();
    return 0;
}
