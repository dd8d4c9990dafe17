#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <span>
#include <string>
#include <vector>

struct sf_private_tag;

namespace Grimworks {

/// How a sample is stored in a WAV file. Whole numbers are rounded to the nearest and limited at full scale.
enum class SampleFormat : std::uint8_t { Pcm16, Pcm24, Float32, Float64 };

/// Bytes that one sample takes.
[[nodiscard]] int SampleBytes(SampleFormat format);

/// Writes one WAV file, all or nothing: the sound goes into a file beside the target, which takes the
/// target's name only when `Commit` is called. Without that the destructor removes it, and a file that was
/// there before stays as it was. The same sound always gives the same bytes.
class WavWriter {
public:
    /// Opens the file beside `target`. Throws HostError when that cannot be written.
    WavWriter(std::filesystem::path target, int channels, int sampleRate, SampleFormat sampleFormat);
    ~WavWriter();
    WavWriter(const WavWriter&) = delete;
    WavWriter& operator=(const WavWriter&) = delete;

    /// Frames that fit in a WAV file of this format, whose sizes are 32-bit numbers.
    [[nodiscard]] static std::int64_t MaxFrames(int channels, SampleFormat format);

    /// The target, for messages.
    [[nodiscard]] std::string Name() const;

    /// Appends frames of interleaved samples; full scale is 1. Throws HostError when the system will not take
    /// them.
    void Write(std::span<const double> interleaved);

    /// Finishes the file and gives it its name. Throws HostError when that fails.
    void Commit();

private:
    struct Closer {
        void operator()(sf_private_tag* opened) const;
    };

    void CheckTarget() const;
    void Open(int sampleRate);
    void Discard();
    [[noreturn]] void Fail(const std::string& fault) const;
    std::int64_t WriteShorts(std::span<const double> interleaved);
    std::int64_t WriteInts(std::span<const double> interleaved);
    std::int64_t WriteFloats(std::span<const double> interleaved);
    std::int64_t WriteDoubles(std::span<const double> interleaved);

    std::filesystem::path targetPath;
    std::filesystem::path partPath;
    int channelCount;
    SampleFormat format;
    std::fstream file;
    std::unique_ptr<sf_private_tag, Closer> sound;
    std::vector<std::int16_t> shorts;
    std::vector<std::int32_t> ints;
    std::vector<float> floats;
};

} // namespace Grimworks
