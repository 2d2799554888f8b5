#pragma once

/// Reads the four settings into the shared state, in their fixed order. Raises "Type mismatch" for a stored number
/// that is none, "Overflow" for one beyond 16 bits.
void read_settings();

/// Writes the four settings; an empty path of the burning program leaves the stored one as it is.
void write_settings();
