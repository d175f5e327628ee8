// Real numbers as the folder stream stores them: the shortest text that reads back as
// the same double, plain or with an exponent, whichever is shorter (plain on a tie),
// read back only whole and in the C locale's form. The C++ library's own converters
// would make the module load the math library at every start.
#pragma once
#include <cstddef>
#include <string>

std::string RealToText(double value);

// False unless the whole text is one number; a value out of a double's range fails too.
bool RealFromText(const char* text, size_t length, double* value);
