// Prints the largest difference between two sound files. Ends with 1 when they differ in shape or by the
// tolerance or more, or when there is nothing to hear: two silent files agree by accident. usage:
// wave_difference A.wav B.wav TOLERANCE

#include <sndfile.hh>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

struct Sound {
    int rate = 0;
    int channels = 0;
    std::vector<double> samples;
};

bool Read(const char* path, Sound& sound) {
    SndfileHandle file(path);
    if (file.error() != 0) {
        std::fprintf(stderr, "%s: %s\n", path, file.strError());
        return false;
    }
    sound.rate = file.samplerate();
    sound.channels = file.channels();
    sound.samples.resize(static_cast<std::size_t>(file.frames() * file.channels()));
    const auto count = static_cast<sf_count_t>(sound.samples.size());
    if (file.read(sound.samples.data(), count) != count) {
        std::fprintf(stderr, "%s: ends too early\n", path);
        return false;
    }
    return true;
}

double Peak(const std::vector<double>& samples) {
    double peak = 0.0;
    for (const double sample : samples)
        peak = std::max(peak, std::abs(sample));
    return peak;
}

/// The largest difference, infinite when a sample is not a number in either.
double Difference(const std::vector<double>& a, const std::vector<double>& b) {
    double largest = 0.0;
    for (std::size_t k = 0; k < a.size(); ++k) {
        const double difference = std::abs(a[k] - b[k]);
        if (!(difference <= largest)) largest = std::isnan(difference) ? HUGE_VAL : difference;
    }
    return largest;
}

} // namespace

int main(int count, char** arguments) {
    if (count != 4) {
        std::fprintf(stderr, "usage: wave_difference A.wav B.wav TOLERANCE\n");
        return 2;
    }
    Sound a;
    Sound b;
    if (!Read(arguments[1], a) || !Read(arguments[2], b)) return 2;
    if (a.rate != b.rate || a.channels != b.channels || a.samples.size() != b.samples.size()) {
        std::printf("different shape: %d Hz, %d channels, %zu samples; %d Hz, %d channels, %zu samples\n",
                    a.rate, a.channels, a.samples.size(), b.rate, b.channels, b.samples.size());
        return 1;
    }
    const double difference = Difference(a.samples, b.samples);
    const double peak = Peak(a.samples);
    std::printf("%zu samples, peak %.6f, largest difference %.3g\n", a.samples.size(), peak, difference);
    if (peak < 0.01) {
        std::printf("nothing to hear\n");
        return 1;
    }
    return difference < std::strtod(arguments[3], nullptr) ? 0 : 1;
}
