#pragma once

#include <QTemporaryDir>

/// The tour's own machine, on which nobody has started the program before: one drive with a music folder and a folder
/// for copies, and settings that go with it.
class TourMachine
{
public:
    TourMachine();
    ~TourMachine();
    TourMachine(const TourMachine&) = delete;
    TourMachine& operator=(const TourMachine&) = delete;

private:
    QTemporaryDir disk_;
};
