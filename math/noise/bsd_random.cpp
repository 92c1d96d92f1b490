#include "math/noise/bsd_random.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

struct StateType {
    std::int32_t deg;
    std::int32_t sep;
};
constexpr StateType kTypes[5] = {{0, 0}, {7, 3}, {15, 1}, {31, 3}, {63, 1}};
constexpr unsigned long kMinBytes[5] = {8, 32, 64, 128, 256};

constexpr std::uint32_t kMultiplier = 1103515245u;
constexpr std::uint32_t kIncrement = 12345u;

// The reserved word (type 3, rear 0) and the 31 words of the published 4.3BSD initial table.
std::uint32_t g_initialTable[32] = {
    3,          0x9a319039, 0x32d9c024, 0x9b663182, 0x5da1f342, 0xde3b81e0, 0xdf0a6fb5, 0xf103bc02,
    0x48f340fb, 0x7449e56b, 0xbeb1dbb0, 0xab5c5918, 0x946554fd, 0x8c2e680f, 0xeb3d799f, 0xb11ee0b7,
    0x2d436b86, 0xda672e2a, 0x1588ca88, 0xe369735d, 0x904f35f7, 0xd7158fd6, 0x6fa6f051, 0x616e6b96,
    0xac94efdc, 0x36413f93, 0xc622c298, 0xf5a42ab8, 0x8a88d77b, 0xf5ad9d0e, 0x8999220b, 0x27fb47b9};

// The generator: the buffer (its reserved word), the type and its degree and separation, and
// the front and rear positions as word indices into the state words. Positions always satisfy
// 0 <= rear < deg and front == (rear + sep) % deg.
char* g_buffer = reinterpret_cast<char*>(g_initialTable);
std::int32_t g_type = 3;
std::int32_t g_deg = 31;
std::int32_t g_sep = 3;
std::int32_t g_front = 3;
std::int32_t g_rear = 0;

// The state words follow the reserved word. The buffer may have any alignment.
char* Word(std::int32_t i) { return g_buffer + 4 * (1 + i); }
std::uint32_t Load(const char* at) {
    std::uint32_t value;
    std::memcpy(&value, at, sizeof value);
    return value;
}
void Store(char* at, std::uint32_t value) { std::memcpy(at, &value, sizeof value); }

void SelectType(std::int32_t type) {
    g_type = type;
    g_deg = kTypes[type].deg;
    g_sep = kTypes[type].sep;
}

// Records the type and rear position in the reserved word of the current buffer.
void SavePosition() { Store(g_buffer, g_type == 0 ? 0u : std::uint32_t(5 * g_rear + g_type)); }

void PrintCorrupted() { std::fputs("random: state info corrupted; not changed.\n", stderr); }

}  // namespace

long bsd_random() {
    if (g_type == 0) {
        const std::uint32_t x = (Load(Word(0)) * kMultiplier + kIncrement) & 0x7fffffffu;
        Store(Word(0), x);
        return static_cast<long>(x);
    }
    const std::uint32_t sum = Load(Word(g_front)) + Load(Word(g_rear));
    Store(Word(g_front), sum);
    if (++g_front >= g_deg) {
        g_front = 0;
        ++g_rear;
    } else if (++g_rear >= g_deg) {
        g_rear = 0;
    }
    return static_cast<long>(sum >> 1);
}

void bsd_srandom(unsigned int seed) {
    std::uint32_t x = seed;
    Store(Word(0), x);
    if (g_type == 0) return;
    for (std::int32_t i = 1; i < g_deg; ++i) {
        x = x * kMultiplier + kIncrement;
        Store(Word(i), x);
    }
    g_front = g_sep;
    g_rear = 0;
    for (std::int32_t i = 0; i < 10 * g_deg; ++i) bsd_random();
}

char* bsd_initstate(unsigned int seed, char* buffer, unsigned long size) {
    SavePosition();
    if (size < kMinBytes[0]) {
        std::fprintf(stderr, "random: not enough state (%lu bytes); ignored.\n", size);
        return nullptr;
    }
    if (buffer == nullptr) return nullptr;
    std::int32_t type = 4;
    while (size < kMinBytes[type]) --type;
    char* const previous = g_buffer;
    g_buffer = buffer;
    SelectType(type);
    bsd_srandom(seed);
    SavePosition();
    return previous;
}

char* bsd_setstate(char* buffer) {
    SavePosition();
    if (buffer == nullptr) return nullptr;
    std::int32_t word;
    std::memcpy(&word, buffer, sizeof word);
    // Truncating division: -1 to -4 leave a negative remainder and count as corrupt.
    const std::int32_t type = word % 5;
    const std::int32_t rear = word / 5;
    const bool corrupt = type < 0;
    if (corrupt) {
        PrintCorrupted();
    } else {
        SelectType(type);
    }
    char* const previous = g_buffer;
    g_buffer = buffer;
    if (g_type != 0) {
        if (rear >= 0 && rear < g_deg) {
            g_rear = rear;
        } else {
            if (!corrupt) PrintCorrupted();
            g_rear = 0;
        }
        g_front = (g_rear + g_sep) % g_deg;
    }
    return previous;
}
