#include "math/noise/bsd_random.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

const int kDeg[5] = {0, 7, 15, 31, 63};
const int kSep[5] = {0, 3, 1, 3, 1};
const char kCorrupted[] = "random: state info corrupted; not changed.\n";

// The published 4.3BSD initial table.
const std::uint32_t kPublished[31] = {
    0x9a319039, 0x32d9c024, 0x9b663182, 0x5da1f342, 0xde3b81e0, 0xdf0a6fb5, 0xf103bc02, 0x48f340fb,
    0x7449e56b, 0xbeb1dbb0, 0xab5c5918, 0x946554fd, 0x8c2e680f, 0xeb3d799f, 0xb11ee0b7, 0x2d436b86,
    0xda672e2a, 0x1588ca88, 0xe369735d, 0x904f35f7, 0xd7158fd6, 0x6fa6f051, 0x616e6b96, 0xac94efdc,
    0x36413f93, 0xc622c298, 0xf5a42ab8, 0x8a88d77b, 0xf5ad9d0e, 0x8999220b, 0x27fb47b9};

std::uint32_t WordAt(const char* buffer, int i) {
    std::uint32_t w;
    std::memcpy(&w, buffer + 4 * i, 4);
    return w;
}
void SetWord(char* buffer, int i, std::uint32_t w) { std::memcpy(buffer + 4 * i, &w, 4); }

// The generator written as a stream: y[n] = y[n - deg] + y[n - sep] (mod 2^32), output y[n] >> 1.
// Starting from words w with the rear at `rear`, y[-deg + m] is w[(rear + sep + m) % deg].
class Reference {
public:
    Reference(std::vector<std::uint32_t> words, int type, int rear = 0)
        : deg_(kDeg[type]), sep_(kSep[type]) {
        if (type == 0) {
            x_ = words[0];
            return;
        }
        for (int m = 0; m < deg_; ++m) y_.push_back(words[(rear + sep_ + m) % deg_]);
    }
    // The words after seeding, before the 10 * deg discarded numbers.
    static Reference Seeded(std::uint32_t seed, int type) {
        std::vector<std::uint32_t> w = {seed};
        for (int i = 1; i < kDeg[type]; ++i) w.push_back(w.back() * 1103515245u + 12345u);
        Reference r(w, type);
        for (int i = 0; i < 10 * kDeg[type]; ++i) r.Next();
        return r;
    }
    long Next() {
        if (deg_ == 0) {
            x_ = (x_ * 1103515245u + 12345u) & 0x7fffffffu;
            return x_;
        }
        const std::uint32_t v = y_[y_.size() - deg_] + y_[y_.size() - sep_];
        y_.push_back(v);
        return v >> 1;
    }

private:
    int deg_, sep_;
    std::uint32_t x_ = 0;
    std::vector<std::uint32_t> y_;
};

void ExpectSequence(Reference& ref, int n, const char* what) {
    for (int i = 0; i < n; ++i) ASSERT_EQ(bsd_random(), ref.Next()) << what << " value " << i;
}

// Before main: the untouched initial buffer and the first numbers drawn from it, after which the
// buffer is put back as it was.
struct InitialRun {
    std::uint32_t words[32];
    std::vector<long> numbers;
    char* buffer;
};
InitialRun TakeInitialRun() {
    InitialRun run;
    static char scratch[16];  // a type 0 buffer to step aside to
    SetWord(scratch, 0, 0);
    run.buffer = bsd_setstate(scratch);
    bsd_setstate(run.buffer);
    std::memcpy(run.words, run.buffer, sizeof run.words);
    for (int i = 0; i < 100; ++i) run.numbers.push_back(bsd_random());
    bsd_setstate(scratch);
    std::memcpy(run.buffer, run.words, sizeof run.words);
    bsd_setstate(run.buffer);
    return run;
}
const InitialRun kInitial = TakeInitialRun();

// Every test leaves the generator on the library's own buffer, which outlives the buffers here.
class BsdRandom : public testing::Test {
protected:
    void TearDown() override { bsd_setstate(kInitial.buffer); }
    alignas(4) char a_[1024] = {};
    alignas(4) char b_[1024] = {};
};

TEST_F(BsdRandom, StartsOnThePublishedTableWhichIsSeedOne) {
    EXPECT_EQ(kInitial.words[0], 3u);  // type 3, rear 0
    EXPECT_EQ(0, std::memcmp(kInitial.words + 1, kPublished, sizeof kPublished));
    Reference fromTable(std::vector<std::uint32_t>(kPublished, kPublished + 31), 3);
    for (long n : kInitial.numbers) ASSERT_EQ(n, fromTable.Next());
    EXPECT_EQ(kInitial.numbers[0], 2078917053);  // worked out separately from the recurrence

    // The published table is the state seed 1 leaves after its 310 discarded numbers.
    bsd_initstate(1, a_, 128);
    EXPECT_EQ(0, std::memcmp(a_ + 4, kPublished, sizeof kPublished));
    for (long n : kInitial.numbers) ASSERT_EQ(bsd_random(), n);
}

TEST_F(BsdRandom, BufferSizeSelectsTheTypeAndSeedsIt) {
    const unsigned long sizes[] = {8, 31, 32, 63, 64, 127, 128, 255, 256, ULONG_MAX};
    for (int i = 0; i < 10; ++i) {
        const int type = i / 2;
        std::memset(a_, 0xEE, sizeof a_);
        bsd_initstate(12345, a_, sizes[i]);
        // The rear is back at word 0 after 10 * deg steps, so the reserved word is the type.
        EXPECT_EQ(WordAt(a_, 0), std::uint32_t(type)) << sizes[i];
        // Nothing is written past the words of the type.
        const int used = 4 * (1 + (type == 0 ? 1 : kDeg[type]));
        EXPECT_EQ(static_cast<unsigned char>(a_[used]), 0xEE) << sizes[i];
        Reference ref = Reference::Seeded(12345, type);
        ExpectSequence(ref, 300, "after initstate");
        for (unsigned int seed : {0u, 0xFFFFFFFFu}) {
            bsd_srandom(seed);
            Reference reseeded = Reference::Seeded(seed, type);
            ExpectSequence(reseeded, 100, "after srandom");
        }
    }
    bsd_initstate(1, a_, 8);
    EXPECT_EQ(bsd_random(), 1103527590);  // (1103515245 + 12345) & 0x7fffffff
}

TEST_F(BsdRandom, SetstateResumesEachBufferWhereItStopped) {
    // Type 1 in a_, type 4 in b_ (at an odd address), drawn in turns.
    char* const b = b_ + 1;
    bsd_initstate(7, a_, 32);
    Reference refA = Reference::Seeded(7, 1);
    ExpectSequence(refA, 5, "a");
    EXPECT_EQ(bsd_initstate(9, b, 300), a_);
    EXPECT_EQ(WordAt(a_, 0), 5u * (5 % 7) + 1);  // rear 5, type 1
    Reference refB = Reference::Seeded(9, 4);
    for (int turn = 0; turn < 20; ++turn) {
        ExpectSequence(refB, 3 + turn, "b");
        EXPECT_EQ(bsd_setstate(a_), b);
        ExpectSequence(refA, 1 + 2 * turn, "a");
        EXPECT_EQ(bsd_setstate(b), a_);
    }
    // Switching to the current buffer changes nothing.
    EXPECT_EQ(bsd_setstate(b), b);
    ExpectSequence(refB, 100, "b again");
    // A type 0 buffer saves 0 and resumes from its word.
    bsd_initstate(3, a_, 20);
    Reference ref0({3}, 0);
    ExpectSequence(ref0, 4, "type 0");
    bsd_setstate(b);
    EXPECT_EQ(WordAt(a_, 0), 0u);
    bsd_setstate(a_);
    ExpectSequence(ref0, 4, "type 0 resumed");
}

TEST_F(BsdRandom, TooSmallBufferIsRefusedWithAMessage) {
    bsd_initstate(5, a_, 64);
    Reference ref = Reference::Seeded(5, 2);
    ExpectSequence(ref, 3, "before");
    for (unsigned long size : {7ul, 0ul}) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(bsd_initstate(1, b_, size), nullptr);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "random: not enough state (" + std::to_string(size) + " bytes); ignored.\n");
        ExpectSequence(ref, 3, "after refusal");
    }
    testing::internal::CaptureStderr();
    EXPECT_EQ(bsd_initstate(1, nullptr, 64), nullptr);
    EXPECT_EQ(bsd_setstate(nullptr), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    ExpectSequence(ref, 3, "after null buffers");
}

TEST_F(BsdRandom, CorruptedReservedWordsKeepEveryPositionInTheBuffer) {
    struct Case {
        std::int32_t word;
        int type;  // type in force afterwards, from type 3
        int rear;
        bool message;
    } const cases[] = {
        {-1, 3, 0, true},         {-4, 3, 0, true},           {-6, 3, 0, true},
        {INT_MIN, 3, 0, true},    {-5, 0, 0, false},          {5 * 30 + 1, 1, 0, true},
        {5 * 31 + 3, 3, 0, true}, {5 * 30 + 3, 3, 30, false}, {5 * 62 + 4, 4, 62, false},
        {INT_MAX, 2, 0, true},    {5 * 14 + 2, 2, 14, false},
    };
    for (const Case& c : cases) {
        bsd_initstate(1, a_, 128);  // type 3 in force
        std::vector<std::uint32_t> words;
        for (int i = 0; i < 63; ++i) {
            words.push_back((0x01000193u * (i + 1)) ^ 0x5bd1e995u);
            SetWord(b_, i + 1, words.back());
        }
        std::memcpy(b_, &c.word, 4);
        testing::internal::CaptureStderr();
        EXPECT_EQ(bsd_setstate(b_), a_);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), c.message ? kCorrupted : "") << c.word;
        Reference ref(words, c.type, c.rear);
        ExpectSequence(ref, 300, std::to_string(c.word).c_str());
    }
}

}  // namespace
