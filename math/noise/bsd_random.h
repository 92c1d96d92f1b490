#pragma once
// A process-wide additive-feedback pseudo-random generator (the 4.3BSD random(3) family) under
// names of its own, beside the C library's generator.
//
// The state is a caller-provided buffer of 32-bit words. Its first word is reserved: it records
// the type and the rear position (0 for type 0, else 5 * rear + type) whenever the generator
// leaves the buffer, so the buffer can be taken up again with bsd_setstate. The buffer size
// handed to bsd_initstate selects the type:
//
//   bytes       type   degree   separation
//   8..31       0      -        -            x = (1103515245 x + 12345) & 0x7fffffff
//   32..63      1      7        3
//   64..127     2      15       1
//   128..255    3      31       3
//   256 and up  4      63       1
//
// Types 1 to 4 produce x[n] = x[n - degree] + x[n - separation] (mod 2^32) and return the upper
// 31 bits. Before any call the generator runs on a static type 3 table. The state is shared by
// the whole process and not locked: callers serialise access. Buffers need no alignment.

#include "math/foundations/export.h"

// The next number, in 0 .. 2^31 - 1.
MATH_API long bsd_random();

// Reseeds the current state: the first word takes the seed, the others follow by
// x[i] = 1103515245 x[i-1] + 12345, and the first 10 * degree numbers are discarded.
MATH_API void bsd_srandom(unsigned int seed);

// Makes buffer (size bytes, reserved word first) the current state of the type its size selects
// and seeds it. Returns the previous buffer (its reserved word), or null when size is below 8
// bytes ("random: not enough state (N bytes); ignored." on the standard error stream) or buffer
// is null; the current state is then kept.
MATH_API char* bsd_initstate(unsigned int seed, char* buffer, unsigned long size);

// Takes up a buffer prepared by bsd_initstate where it was left, and returns the previous
// buffer. A reserved word r (a signed 32-bit value) with a negative r % 5 keeps the current type
// and prints "random: state info corrupted; not changed." on the standard error stream; the
// buffer is taken up all the same. A rear position r / 5 outside the buffer prints the same
// message and restarts at the buffer's first word. A null buffer is refused: null is returned
// and the current state is kept.
MATH_API char* bsd_setstate(char* buffer);
