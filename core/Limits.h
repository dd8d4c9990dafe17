#pragma once

namespace Grimworks {

/// The sizes that the instrument is built around. A host sees the parameter and program counts; the others
/// bound the engine's work and storage.
inline constexpr int kVoices = 64;
inline constexpr int kOscillators = 3;
inline constexpr int kUnisonGenerators = 2;
inline constexpr int kLiveParameters = 140; ///< ids with an effect on the sound
inline constexpr int kParameters = 159;     ///< live ids and the reserved ones behind them
inline constexpr int kPrograms = 128;
inline constexpr int kWaveforms = 41;
inline constexpr int kWaveSize = 4096; ///< samples of one stored cycle
inline constexpr int kCurves = 42;
inline constexpr int kCurvePoints = 512;
inline constexpr int kDeferredEvents = 8;
inline constexpr int kModulationRecord = 5; ///< doubles in one record of LFO values for the scope

inline constexpr double kDefaultSampleRate = 44100.0; ///< Hz, until a host sets one
inline constexpr int kDefaultBlockSize = 1024;        ///< frames, until a host sets one

/// One semitone as a frequency ratio, and the same less one: the constant of every linear fine-tune law.
inline constexpr double kSemitone = 1.0594630943592953;
inline constexpr double kSemitoneStep = 0.05946309435929531;

} // namespace Grimworks
