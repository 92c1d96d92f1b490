#pragma once
// The one export macro of the tree. Everything is built with -fvisibility=hidden; the public
// interface (of math and of math_platform) is marked MATH_API.
#if defined(__GNUC__)
#define MATH_API __attribute__((visibility("default")))
#else
#define MATH_API
#endif
