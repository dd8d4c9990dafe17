#include "plugin/ByteChunk.h"

namespace Grimworks {

void ByteChunk::PutBytes(const void* source, int count) {
    if (source == nullptr || count < 1) return;
    const auto* first = static_cast<const std::uint8_t*>(source);
    bytes.insert(bytes.end(), first, first + count);
}

int ByteChunk::GetBytes(void* target, int count, int position) const {
    const int next = Skip(count, position);
    if (next >= 0 && count > 0) std::memcpy(target, bytes.data() + position, static_cast<std::size_t>(count));
    return next;
}

int ByteChunk::Skip(int count, int position) const {
    if (position < 0 || count < 0 || position > Size() || count > Size() - position) return -1;
    return position + count;
}

} // namespace Grimworks
