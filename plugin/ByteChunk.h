#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>
#include <vector>

namespace Grimworks {

/// A growing buffer of bytes in which state travels. Writing appends; the reader keeps its own position. All
/// numbers stand as they stand in memory, little-endian. Not thread-safe.
class ByteChunk {
public:
    /// Appends bytes; a count below 1 appends nothing.
    void PutBytes(const void* source, int count);

    /// Appends a number.
    template <typename T>
    void Put(T number) {
        static_assert(std::is_arithmetic_v<T>);
        PutBytes(&number, static_cast<int>(sizeof number));
    }

    /// Copies `count` bytes from a position. Returns the position behind them, or -1 with nothing copied when
    /// the position is negative or not all of them are there.
    [[nodiscard]] int GetBytes(void* target, int count, int position) const;

    /// Reads a number; like GetBytes, and the number keeps its old value when it does not fit.
    template <typename T>
    [[nodiscard]] int Get(T& number, int position) const {
        static_assert(std::is_arithmetic_v<T>);
        return GetBytes(&number, static_cast<int>(sizeof number), position);
    }

    /// The position `count` bytes further on, or -1 when they are not there.
    [[nodiscard]] int Skip(int count, int position) const;

    /// Empties the buffer; its memory is kept.
    void Clear() { bytes.clear(); }

    /// Takes other bytes in place of the present ones.
    void Assign(std::span<const std::uint8_t> source) { bytes.assign(source.begin(), source.end()); }

    [[nodiscard]] bool IsEmpty() const { return bytes.empty(); }
    [[nodiscard]] int Size() const { return static_cast<int>(bytes.size()); }
    [[nodiscard]] const std::uint8_t* Data() const { return bytes.data(); }
    [[nodiscard]] std::uint8_t* Data() { return bytes.data(); }
    [[nodiscard]] std::span<const std::uint8_t> Bytes() const { return bytes; }

    friend bool operator==(const ByteChunk&, const ByteChunk&) = default;

private:
    std::vector<std::uint8_t> bytes;
};

} // namespace Grimworks
