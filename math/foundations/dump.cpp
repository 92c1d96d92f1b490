#include "math/foundations/dump.h"

#include <cstring>
#include <new>

#include "math/platform/runtime_hooks.h"

void F3DDumpTitle(const char* title, std::ostream& os) {
    if (title == nullptr) return;
    char* converted = new (std::nothrow) char[std::strlen(title) + 1];
    if (converted == nullptr) return;
    CharToOemA(title, converted);
    os << converted << '\n';
    delete[] converted;
}
