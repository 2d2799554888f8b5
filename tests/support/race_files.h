#pragma once

#include <QByteArray>
#include <QString>

#include <string>
#include <string_view>

// The files that two programs race for. Each has a number that its content tells and proves, so that it is known
// wherever it lies. In front of the tag in its last 128 bytes lies an area that is written over and over: the bytes of
// one writing are alike, and each writing goes through it from the front, so that a mixture that never was is known
// too.

/// The bytes of a race file; no two numbers have the same.
qsizetype race_file_size(int number);

/// A race file as it is made.
QByteArray race_file(int number);

/// The name that a race file has at first, and the one of form [artist][title][genre] that its tag gives.
QString plain_race_name(int number);
QString fif_race_name(int number);

/// The number of the race file that these bytes begin, -1 for none: so many are needed as `race_head` tells.
int race_number(std::string_view content);
constexpr int race_head = 1024;

/// Where the area begins that is written over, and its bytes.
qsizetype race_area_start(int number);
constexpr int race_area = 8192;

/// What is wrong with the content of a race file of this number; empty when it is whole.
QByteArray race_fault(int number, const QByteArray& content);
