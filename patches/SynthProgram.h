#pragma once

#include "core/ValueBlock.h"
#include "effects/DistortionDataProvider.h"

#include <string>
#include <string_view>
#include <vector>

namespace Grimworks {

/// One program: a value for every live parameter, a name, and the keys by which text programs know the
/// parameters. Values are normalised, 0..1. A plain record, for the host's or the editor's thread.
class SynthProgram {
public:
    /// Ties a text key to a parameter id.
    struct KeyEntry {
        std::string key;
        int id;
    };

    /// What an unknown key counts as: an id behind the last parameter.
    static constexpr int kUnknownId = kParameters;

    /// The constructor values under the name "Basic Bass Drum", with all 159 keys.
    SynthProgram();
    SynthProgram(const SynthProgram&) = default;
    SynthProgram& operator=(const SynthProgram&) = default;
    virtual ~SynthProgram() = default;

    /// The stored value of ids 0..139, 0.0 for any other id.
    [[nodiscard]] double GetValue(int id) const { return values.GetValue(id); }

    /// Stores a value, limited to 0..1. Ids outside 0..139 and a NaN are ignored, and so are limiter mode,
    /// output volume and limiter level: how loud a musician has set the output is not a text program's
    /// affair.
    void SetValue(int id, double value);

    /// Stores the value of a choice as it is, without the limits and the gap of SetValue. Ids outside 0..139
    /// are ignored.
    void SetChoice(int id, double value);

    /// Parameter id of a key, compared letter by letter; kUnknownId if there is none.
    [[nodiscard]] int IdOfKey(std::string_view key) const;

    /// The key of a parameter id; empty outside 0..158.
    [[nodiscard]] std::string KeyOfId(int id) const;

    /// The 671 numbers of a preset: the 512 points of the stock curve that "DistortionType" selects, then the
    /// values of ids 0..158.
    [[nodiscard]] std::vector<double> BuildPresetValues(const DistortionDataProvider& curves) const;

    ValueBlock values;
    std::string name;
    std::vector<KeyEntry> keys;
};

} // namespace Grimworks
