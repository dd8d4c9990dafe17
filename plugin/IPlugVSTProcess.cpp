#include "plugin/IPlugVST.h"

#include "core/DenormalGuard.h"

#include <algorithm>

namespace Grimworks {

namespace {

/// A host's buffer from this frame on, null where the host gave none.
template <typename Sample>
Sample* From(Sample** channels, std::size_t channel, std::int32_t start) {
    return channels != nullptr && channels[channel] != nullptr ? channels[channel] + start : nullptr;
}

} // namespace

template <typename Sample>
double** IPlugVST::FillInputs(Sample** inputs, std::int32_t start, int frames) {
    if (inputChannels.empty()) return nullptr;
    for (std::size_t c = 0; c < inputChannels.size(); ++c) {
        Channel& channel = inputChannels[c];
        const Sample* source = channel.connected ? From(inputs, c, start) : nullptr;
        if (source != nullptr) {
            std::copy_n(source, frames, channel.scratch.begin());
        } else {
            std::fill_n(channel.scratch.begin(), frames, 0.0);
        }
        inputPointers[c] = channel.scratch.data();
    }
    return inputPointers.data();
}

template <typename Sample, typename Deliver>
void IPlugVST::ProcessInBlocks(Sample** inputs, std::int32_t frames, Deliver deliver) {
    const PlugLockGuard guard(Lock());
    const DenormalGuard denormals;
    // Some hosts forget the request between two blocks.
    if (Identity().wantsMidi) AskHost(HostOp::WantMidi, 0, 1);
    if (frames < 0) return;
    std::int32_t start = 0;
    do {
        const int length = std::min(frames - start, GetBlockSize());
        double** const sources = FillInputs(inputs, start, length);
        deliver(start, length, sources);
        start += length;
    } while (start < frames);
}

template <typename Deliver>
void IPlugVST::ProcessFloats(float** inputs, float** outputs, std::int32_t frames, Deliver deliver) {
    ProcessInBlocks(inputs, frames, [&](std::int32_t start, int length, double** sources) {
        for (std::size_t c = 0; c < outputChannels.size(); ++c)
            outputPointers[c] = outputChannels[c].scratch.data();
        ProcessDoubleReplacing(sources, outputPointers.data(), length);
        for (std::size_t c = 0; c < outputChannels.size(); ++c) {
            if (!outputChannels[c].connected) continue;
            float* const target = From(outputs, c, start);
            if (target != nullptr) deliver(outputChannels[c].scratch.data(), target, length);
        }
    });
}

void IPlugVST::ProcessDoubles(double** inputs, double** outputs, std::int32_t frames) {
    ProcessInBlocks(inputs, frames, [&](std::int32_t start, int length, double** sources) {
        for (std::size_t c = 0; c < outputChannels.size(); ++c) {
            double* const target = outputChannels[c].connected ? From(outputs, c, start) : nullptr;
            outputPointers[c] = target != nullptr ? target : outputChannels[c].scratch.data();
        }
        ProcessDoubleReplacing(sources, outputPointers.data(), length);
    });
}

void IPlugVST::ProcessEntry(AEffect* record, float** inputs, float** outputs, std::int32_t frames) noexcept {
    IPlugVST* plug = FromEffect(record);
    if (plug == nullptr) return;
    try {
        plug->ProcessFloats(inputs, outputs, frames, [](const double* sound, float* target, int length) {
            for (int i = 0; i < length; ++i)
                target[i] += static_cast<float>(sound[i]);
        });
    } catch (...) {
        return; // nothing may unwind into the host
    }
}

void IPlugVST::ProcessReplacingEntry(AEffect* record, float** inputs, float** outputs,
                                     std::int32_t frames) noexcept {
    IPlugVST* plug = FromEffect(record);
    if (plug == nullptr) return;
    try {
        plug->ProcessFloats(inputs, outputs, frames, [](const double* sound, float* target, int length) {
            for (int i = 0; i < length; ++i)
                target[i] = static_cast<float>(sound[i]);
        });
    } catch (...) {
        return; // nothing may unwind into the host
    }
}

void IPlugVST::ProcessDoubleReplacingEntry(AEffect* record, double** inputs, double** outputs,
                                           std::int32_t frames) noexcept {
    IPlugVST* plug = FromEffect(record);
    if (plug == nullptr) return;
    try {
        plug->ProcessDoubles(inputs, outputs, frames);
    } catch (...) {
        return; // nothing may unwind into the host
    }
}

} // namespace Grimworks
