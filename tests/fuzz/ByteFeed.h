#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace Grimworks::Fuzz {

/// Takes decisions out of a fuzzer's bytes, one after the other; zeros once they are used up.
class ByteFeed {
public:
    ByteFeed(const std::uint8_t* data, std::size_t size) : bytes(data, size) {}

    [[nodiscard]] bool Empty() const { return position >= bytes.size(); }

    template <typename T>
    T Take() {
        T value{};
        const std::size_t count = position < bytes.size() ? std::min(sizeof(T), bytes.size() - position) : 0;
        if (count > 0) std::memcpy(&value, bytes.data() + position, count);
        position += count;
        return value;
    }

    /// At most `limit` of the bytes that are left.
    std::span<const std::uint8_t> TakeSome(std::size_t limit) {
        const std::size_t count = std::min(limit, bytes.size() - position);
        const auto taken = bytes.subspan(position, count);
        position += count;
        return taken;
    }

private:
    std::span<const std::uint8_t> bytes;
    std::size_t position = 0;
};

} // namespace Grimworks::Fuzz
