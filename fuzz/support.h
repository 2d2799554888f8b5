#pragma once

#include <QByteArrayView>
#include <QString>

#include <cstddef>
#include <cstdint>

// What the fuzzing programs share.

/// Ends the program with the words of a property that does not hold, so that the fuzzer keeps the input.
void require(bool holds, const char* property);

/// The input of a fuzzing program as bytes.
QByteArrayView bytes_of(const std::uint8_t* data, std::size_t size);

/// Takes the first line off `input`, without its line end; all of it where there is none.
QByteArrayView take_line(QByteArrayView& input);

/// A text from any bytes: UTF-8, in which a byte that is out of place stands for a lone surrogate, high or low. Every
/// text of the program can come up.
QString any_text(QByteArrayView bytes);

/// Whether `text` holds half of a surrogate pair without the other half.
bool has_lone_surrogate(QStringView text);

/// One run with an input that the fuzzer made.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
