#pragma once
// The text format shared by every value type.
//
//   operator<<  "( " + components separated by " " + " )", numbers in the stream's current
//               format (single precision widened to double), no trailing line end; a matrix
//               writes one such group per row, separated by line ends.
//   operator>>  the stored components as bare whitespace-separated numbers. It cannot read what
//               operator<< writes; that asymmetry is kept for compatibility.
//   Dump        the title line (F3DDumpTitle), the value, a line end, then a line holding one
//               blank.
#include <istream>
#include <ostream>

#include "math/foundations/export.h"

// Writes title, converted to the console code page, and a line end; nothing for a null title
// (or when the conversion buffer cannot be allocated).
MATH_API void F3DDumpTitle(const char* title, std::ostream& os);

// Writes "( c0 c1 ... )".
template <typename T>
std::ostream& F3DWriteComponents(std::ostream& os, const T* c, unsigned int n) {
    os << "( ";
    for (unsigned int i = 0; i < n; ++i) {
        if (i != 0) os << ' ';
        os << static_cast<double>(c[i]);
    }
    return os << " )";
}

// Writes rows groups of cols components, one group per line, with no line end after the last.
template <typename T>
std::ostream& F3DWriteRows(std::ostream& os, const T* c, unsigned int rows, unsigned int cols) {
    for (unsigned int r = 0; r < rows; ++r) {
        if (r != 0) os << '\n';
        F3DWriteComponents(os, c + r * cols, cols);
    }
    return os;
}

// Reads n bare numbers into c, in order.
template <typename T>
std::istream& F3DReadComponents(std::istream& is, T* c, unsigned int n) {
    for (unsigned int i = 0; i < n; ++i) is >> c[i];
    return is;
}

// The Dump of every value type: title line, value, line end, a line holding one blank.
template <typename V>
void F3DDumpValue(const V& value, const char* title, std::ostream& os) {
    F3DDumpTitle(title, os);
    os << value << '\n';
    os << " " << '\n';
}
