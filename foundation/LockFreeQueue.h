#pragma once

#include "foundation/Lock.h"
#include "foundation/Realtime.h"

#include <array>
#include <atomic>
#include <bit>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>

/// A first-in first-out queue for any number of producers and consumers, without locks.
///
/// The nodes lie in an array and point at each other by links: 16 bits of node index, and above them 16 bits
/// of a counter that every exchange raises, so that a node that came back in the meantime isn't taken for the
/// one that was seen before. Node 0 holds no data: its index ends a chain.
///
///   head -> spent -> oldest -> ... -> newest <- tail          free -> node -> node -> 0
///
/// The array grows in pieces that never move: piece 0 has the initial nodes, each next one as many as all
/// before.
template <class T>
class LockFreeQueue {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    /// @param initialNodes  nodes made at once; two of them never hold data
    /// @param nodeLimit     the most nodes there may be, at most 65536
    LockFreeQueue(std::uint32_t initialNodes, std::uint32_t nodeLimit);

    /// Appends a copy of `value`. Returns 0, and drops it, when all nodes up to the limit are in use. Thread:
    /// any; takes a lock and allocates only when the nodes so far are used up and there may be more.
    int push(const T& value) noexcept;

    /// The same within the nodes that there are, so that it neither locks nor allocates. Thread: any.
    int pushWithin(const T& value) noexcept REALTIME;

    /// Has at least so many nodes from here on, or as many as there may be. Thread: any but audio.
    void reserve(std::uint32_t nodes) noexcept;

    /// Takes the oldest value. False if there is none. Thread: any.
    bool pop(T& value) noexcept REALTIME;

private:
    using Link = std::uint32_t;
    static constexpr std::size_t wordCount = (sizeof(T) + 3) / 4;

    struct Node {
        std::atomic<Link> next{0};
        // Words, as a slow reader may still look at a node that is being written anew; it then discards the
        // value.
        std::array<std::atomic<std::uint32_t>, wordCount> payload{};
    };

    static constexpr std::uint32_t indexOf(Link link) { return link & 0xFFFF; }
    static constexpr Link successor(Link old, std::uint32_t index)
    {
        return ((old + 0x10000) & 0xFFFF0000) | index;
    }

    Node& node(std::uint32_t index) noexcept REALTIME;
    std::uint32_t takeFree() noexcept REALTIME;
    void putFree(std::uint32_t index) noexcept REALTIME;
    int append(std::uint32_t index, const T& value) noexcept REALTIME;
    std::uint32_t grow() noexcept;
    std::uint32_t addPiece() noexcept;
    void store(Node& target, const T& value) noexcept REALTIME;
    static void load(const Node& source, T& value) noexcept REALTIME;

    const std::uint32_t initialCount;
    const std::uint32_t limit;
    std::atomic<std::uint32_t> count;
    std::array<std::unique_ptr<Node[]>, 18> pieces;
    std::array<std::atomic<Node*>, 18> pieceStarts{};
    std::atomic<Link> head;
    std::atomic<Link> tail;
    std::atomic<Link> freeList{0};
    std::unique_ptr<CriticalSection> growLock = CriticalSection::create();
};

template <class T>
LockFreeQueue<T>::LockFreeQueue(std::uint32_t initialNodes, std::uint32_t nodeLimit)
    : initialCount(initialNodes), limit(nodeLimit), count(initialNodes), head(1), tail(1)
{
    pieces[0] = std::make_unique<Node[]>(initialNodes);
    pieceStarts[0] = pieces[0].get();
    for (std::uint32_t i = initialNodes - 1; i >= 2; --i)
        putFree(i);
}

template <class T>
int LockFreeQueue<T>::push(const T& value) noexcept
{
    const std::uint32_t index = takeFree();
    return append(index != 0 ? index : grow(), value);
}

template <class T>
int LockFreeQueue<T>::pushWithin(const T& value) noexcept
{
    return append(takeFree(), value);
}

/// Puts a node, 0 for none, behind the newest one.
template <class T>
int LockFreeQueue<T>::append(std::uint32_t index, const T& value) noexcept
{
    if (index == 0)
        return 0;

    Node& added = node(index);
    store(added, value);
    added.next.store(successor(added.next.load(), 0));
    for (;;) {
        Link last = tail.load();
        Link next = node(indexOf(last)).next.load();
        if (last != tail.load())
            continue;
        if (indexOf(next) != 0) {  // somebody appended and hasn't moved the tail yet
            tail.compare_exchange_weak(last, successor(last, indexOf(next)));
            continue;
        }
        if (node(indexOf(last)).next.compare_exchange_weak(next, successor(next, index))) {
            tail.compare_exchange_strong(last, successor(last, index));
            return 1;
        }
    }
}

template <class T>
bool LockFreeQueue<T>::pop(T& value) noexcept
{
    for (;;) {
        Link first = head.load();
        Link last = tail.load();
        const Link next = node(indexOf(first)).next.load();
        if (first != head.load())
            continue;
        if (indexOf(first) == indexOf(last)) {
            if (indexOf(next) == 0)
                return false;
            tail.compare_exchange_weak(last, successor(last, indexOf(next)));
            continue;
        }
        T candidate;
        load(node(indexOf(next)), candidate);
        if (head.compare_exchange_weak(first, successor(first, indexOf(next)))) {
            value = candidate;
            putFree(indexOf(first));
            return true;
        }
    }
}

template <class T>
auto LockFreeQueue<T>::node(std::uint32_t index) noexcept -> Node&
{
    const auto piece = static_cast<std::size_t>(std::bit_width(index / initialCount));
    const std::uint32_t start = piece == 0 ? 0 : initialCount << (piece - 1);
    return pieceStarts[piece].load(std::memory_order_acquire)[index - start];
}

template <class T>
std::uint32_t LockFreeQueue<T>::takeFree() noexcept
{
    Link first = freeList.load();
    while (indexOf(first) != 0) {
        const Link next = node(indexOf(first)).next.load();
        if (freeList.compare_exchange_weak(first, successor(first, indexOf(next))))
            break;
    }
    return indexOf(first);
}

template <class T>
void LockFreeQueue<T>::putFree(std::uint32_t index) noexcept
{
    Node& freed = node(index);
    Link first = freeList.load();
    do
        freed.next.store(successor(freed.next.load(), indexOf(first)));
    while (!freeList.compare_exchange_weak(first, successor(first, index)));
}

template <class T>
std::uint32_t LockFreeQueue<T>::grow() noexcept
{
    if (count.load() >= limit)
        return takeFree();  // no lock for what can't grow
    const ScopedLock scopedLock(*growLock);
    if (const std::uint32_t index = takeFree())
        return index;  // another producer grew the array meanwhile
    return addPiece();
}

template <class T>
void LockFreeQueue<T>::reserve(std::uint32_t nodes) noexcept
{
    const ScopedLock scopedLock(*growLock);
    while (count.load() < nodes) {
        const std::uint32_t index = addPiece();
        if (index == 0)
            return;
        putFree(index);
    }
}

/// Doubles the nodes, with the lock held. Returns one that isn't in the free list; 0 if there can't be more.
template <class T>
std::uint32_t LockFreeQueue<T>::addPiece() noexcept
{
    const std::uint32_t start = count.load();
    if (start >= limit || start * 2 > 0x10000)
        return 0;
    const auto piece = static_cast<std::size_t>(std::bit_width(start / initialCount));
    pieces[piece].reset(new (std::nothrow) Node[start]);
    if (!pieces[piece])
        return 0;
    pieceStarts[piece].store(pieces[piece].get(), std::memory_order_release);
    count = start * 2;
    for (std::uint32_t i = start * 2 - 1; i > start; --i)
        putFree(i);
    return start;
}

template <class T>
void LockFreeQueue<T>::store(Node& target, const T& value) noexcept
{
    std::array<std::uint32_t, wordCount> words{};
    std::memcpy(words.data(), &value, sizeof(T));
    for (std::size_t i = 0; i < wordCount; ++i)
        target.payload[i].store(words[i], std::memory_order_relaxed);
}

template <class T>
void LockFreeQueue<T>::load(const Node& source, T& value) noexcept
{
    std::array<std::uint32_t, wordCount> words;
    for (std::size_t i = 0; i < wordCount; ++i)
        words[i] = source.payload[i].load(std::memory_order_relaxed);
    std::memcpy(static_cast<void*>(&value), words.data(), sizeof(T));
}
