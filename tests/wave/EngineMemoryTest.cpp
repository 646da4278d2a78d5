#include "wave/EngineMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <random>
#include <thread>
#include <vector>

namespace wave {

namespace {

struct Piece {
    unsigned char* place;
    std::size_t bytes;
    unsigned char mark;

    bool isWhole() const
    {
        return std::all_of(place, place + bytes, [this](unsigned char byte) { return byte == mark; });
    }
};

Piece taken(std::size_t bytes, unsigned char mark)
{
    auto* const place = static_cast<unsigned char*>(EngineMemory::take(bytes));
    std::memset(place, mark, bytes);
    return {place, bytes, mark};
}

/// Takes and gives back at random; false if a piece was misplaced or touched by another.
bool useAtRandom(unsigned seed)
{
    std::minstd_rand random(seed);
    std::vector<Piece> pieces;
    bool good = true;
    const auto giveBack = [&](std::size_t i) {
        good = good && pieces[i].isWhole();
        EngineMemory::giveBack(pieces[i].place, pieces[i].bytes);
        pieces.erase(pieces.begin() + static_cast<std::ptrdiff_t>(i));
    };
    for (int turn = 0; turn < 3000; ++turn) {
        const bool large = random() % 16 == 0;
        pieces.push_back(taken(1 + random() % (large ? EngineMemory::largest + 100 : 700),
                               static_cast<unsigned char>(random())));
        good = good && reinterpret_cast<std::uintptr_t>(pieces.back().place) % EngineMemory::alignment == 0;
        if (random() % 5 < 2)
            giveBack(random() % pieces.size());
    }
    while (!pieces.empty())
        giveBack(pieces.size() - 1);
    return good;
}

#if !defined(SORDELIN_SANITIZED)
std::size_t residentBytes()
{
    std::ifstream file("/proc/self/statm");
    std::size_t whole = 0, resident = 0;
    file >> whole >> resident;
    return resident * 4096;
}
#endif

}  // namespace

TEST(EngineMemory, KeepsPiecesApartWhoeverTakesThem)
{
    std::vector<std::thread> threads;
    int good[3] = {};
    for (unsigned i = 0; i < 3; ++i)
        threads.emplace_back([&good, i] { good[i] = useAtRandom(i + 1) ? 1 : 0; });
    for (std::thread& thread : threads)
        thread.join();
    for (const int one : good)
        EXPECT_EQ(one, 1);
    EngineMemory::giveBack(nullptr, 1);
}

#if !defined(SORDELIN_SANITIZED)
TEST(EngineMemory, PutsWhatIsTakenTogetherSideBySideAndGoesWithTheLastPiece)
{
    std::size_t before = 0;
    for (int engine = 0; engine < 400; ++engine) {
        std::vector<Piece> pieces;
        for (int i = 0; i < 1000; ++i)
            pieces.push_back(taken(600, 1));  // 640 each, so that chunks are left behind
        int beside = 0;
        for (std::size_t i = 1; i < pieces.size(); ++i)
            beside += pieces[i].place == pieces[i - 1].place + 640 ? 1 : 0;
        EXPECT_GE(beside, 998);
        for (const Piece& piece : pieces)
            EngineMemory::giveBack(piece.place, piece.bytes);
        if (engine == 20)
            before = residentBytes();
    }
    EXPECT_LT(residentBytes(), before + (8u << 20));  // 380 engines took 230 MiB in turn
}
#endif

}  // namespace wave
