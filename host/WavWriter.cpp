#include "host/WavWriter.h"

#include "host/Files.h"
#include "host/HostError.h"

#include <sndfile.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <system_error>
#include <utility>

namespace Grimworks {

namespace {

constexpr std::int64_t kMaxFileBytes = 0xFFFFFFFFLL;
constexpr std::int64_t kHeaderRoom = 4096;

std::fstream& File(void* user) {
    return *static_cast<std::fstream*>(user);
}

// The library asks for the file's functions, so that a path in any alphabet can be opened on every system.
sf_count_t FileLength(void* user) {
    std::fstream& file = File(user);
    const auto position = file.tellp();
    file.seekp(0, std::ios::end);
    const auto length = file.tellp();
    file.seekp(position);
    return length;
}

sf_count_t FileSeek(sf_count_t offset, int whence, void* user) {
    std::fstream& file = File(user);
    const auto from = whence == SEEK_SET ? std::ios::beg : whence == SEEK_CUR ? std::ios::cur : std::ios::end;
    file.seekp(offset, from);
    return file.tellp();
}

sf_count_t FileRead(void* data, sf_count_t count, void* user) {
    std::fstream& file = File(user);
    file.read(static_cast<char*>(data), count);
    return file.gcount();
}

sf_count_t FileWrite(const void* data, sf_count_t count, void* user) {
    std::fstream& file = File(user);
    file.write(static_cast<const char*>(data), count);
    return file ? count : 0;
}

sf_count_t FileTell(void* user) {
    return File(user).tellp();
}

int LibraryFormat(SampleFormat format) {
    switch (format) {
    case SampleFormat::Pcm16:
        return SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    case SampleFormat::Pcm24:
        return SF_FORMAT_WAV | SF_FORMAT_PCM_24;
    case SampleFormat::Float32:
        return SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    case SampleFormat::Float64:
        break;
    }
    return SF_FORMAT_WAV | SF_FORMAT_DOUBLE;
}

/// The nearest whole number, limited to -fullScale..fullScale - 1.
long Quantise(double sample, double fullScale) {
    return std::lrint(std::clamp(sample * fullScale, -fullScale, fullScale - 1.0));
}

} // namespace

int SampleBytes(SampleFormat format) {
    switch (format) {
    case SampleFormat::Pcm16:
        return 2;
    case SampleFormat::Pcm24:
        return 3;
    case SampleFormat::Float32:
        return 4;
    case SampleFormat::Float64:
        break;
    }
    return 8;
}

void WavWriter::Closer::operator()(sf_private_tag* opened) const {
    sf_close(opened);
}

WavWriter::WavWriter(std::filesystem::path target, int channels, int sampleRate, SampleFormat sampleFormat)
    : targetPath(std::move(target)), channelCount(channels), format(sampleFormat) {
    CheckTarget();
    try {
        Open(sampleRate);
    } catch (...) {
        Discard();
        throw;
    }
}

WavWriter::~WavWriter() {
    Discard();
}

std::int64_t WavWriter::MaxFrames(int channels, SampleFormat format) {
    return (kMaxFileBytes - kHeaderRoom) / (static_cast<std::int64_t>(channels) * SampleBytes(format));
}

std::string WavWriter::Name() const {
    return TextFromPath(targetPath);
}

void WavWriter::Fail(const std::string& fault) const {
    throw HostError(Name() + ": " + fault);
}

void WavWriter::CheckTarget() const {
    std::error_code ignored;
    const auto status = std::filesystem::status(targetPath, ignored);
    if (!std::filesystem::exists(status)) return;
    if (std::filesystem::is_directory(status)) Fail("is a directory");
    // A rename would put a file in the place of a device.
    if (!std::filesystem::is_regular_file(status)) Fail("is not a regular file");
    errno = 0;
    const std::fstream existing(targetPath, std::ios::in | std::ios::out | std::ios::binary);
    if (!existing) Fail("cannot be written: " + LastSystemError());
}

void WavWriter::Open(int sampleRate) {
    std::error_code ignored;
    if (std::filesystem::is_symlink(targetPath, ignored)) {
        const auto real = std::filesystem::canonical(targetPath, ignored);
        if (!real.empty()) targetPath = real;
    }
    std::filesystem::path beside = targetPath;
    beside += "." + std::to_string(ProcessNumber()) + ".part";
    errno = 0;
    file.open(beside, std::ios::in | std::ios::out | std::ios::binary | std::ios::trunc);
    if (!file) Fail("cannot be written: " + LastSystemError());
    partPath = beside;

    SF_VIRTUAL_IO io{FileLength, FileSeek, FileRead, FileWrite, FileTell};
    SF_INFO info{};
    info.samplerate = sampleRate;
    info.channels = channelCount;
    info.format = LibraryFormat(format);
    sound.reset(sf_open_virtual(&io, SFM_WRITE, &info, &file));
    if (!sound) Fail(std::string("cannot be written: ") + sf_strerror(nullptr));
    // That chunk would hold the time of day.
    sf_command(sound.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
}

void WavWriter::Write(std::span<const double> interleaved) {
    std::int64_t written = 0;
    errno = 0;
    switch (format) {
    case SampleFormat::Pcm16:
        written = WriteShorts(interleaved);
        break;
    case SampleFormat::Pcm24:
        written = WriteInts(interleaved);
        break;
    case SampleFormat::Float32:
        written = WriteFloats(interleaved);
        break;
    case SampleFormat::Float64:
        written = WriteDoubles(interleaved);
        break;
    }
    if (written != static_cast<std::int64_t>(interleaved.size()))
        Fail("cannot be written: " + LastSystemError());
}

std::int64_t WavWriter::WriteShorts(std::span<const double> interleaved) {
    shorts.resize(interleaved.size());
    std::transform(interleaved.begin(), interleaved.end(), shorts.begin(),
                   [](double sample) { return static_cast<std::int16_t>(Quantise(sample, 32768.0)); });
    return sf_write_short(sound.get(), shorts.data(), static_cast<sf_count_t>(shorts.size()));
}

std::int64_t WavWriter::WriteInts(std::span<const double> interleaved) {
    ints.resize(interleaved.size());
    // The library takes the upper three bytes of four.
    std::transform(interleaved.begin(), interleaved.end(), ints.begin(), [](double sample) {
        return static_cast<std::int32_t>(Quantise(sample, 8388608.0) * 256);
    });
    return sf_write_int(sound.get(), ints.data(), static_cast<sf_count_t>(ints.size()));
}

std::int64_t WavWriter::WriteFloats(std::span<const double> interleaved) {
    floats.resize(interleaved.size());
    std::transform(interleaved.begin(), interleaved.end(), floats.begin(),
                   [](double sample) { return static_cast<float>(sample); });
    return sf_write_float(sound.get(), floats.data(), static_cast<sf_count_t>(floats.size()));
}

std::int64_t WavWriter::WriteDoubles(std::span<const double> interleaved) {
    return sf_write_double(sound.get(), interleaved.data(), static_cast<sf_count_t>(interleaved.size()));
}

void WavWriter::Commit() {
    errno = 0;
    const int fault = sf_close(sound.release());
    if (fault != 0) Fail(std::string("cannot be written: ") + sf_error_number(fault));
    file.close();
    if (!file) Fail("cannot be written: " + LastSystemError());
    std::error_code error;
    std::filesystem::rename(partPath, targetPath, error);
    if (error) Fail("cannot be written: " + error.message());
    partPath.clear();
}

void WavWriter::Discard() {
    sound.reset();
    if (file.is_open()) file.close();
    if (partPath.empty()) return;
    std::error_code ignored;
    std::filesystem::remove(partPath, ignored);
    partPath.clear();
}

} // namespace Grimworks
