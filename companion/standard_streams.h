#pragma once

/// Fills the places of standard input, output and error that the program was started without, so that no file that it
/// opens gets one of them and is written into by what it tells. Reading and writing there fails.
void fill_standard_streams();
