#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Grimworks {

/// One automatable parameter: a plain value in min..max and its mapping to the 0..1 that hosts and controls
/// use. The object has no lock of its own; whoever writes the value holds the plug-in lock.
class IParam {
public:
    enum class Type : int { None = 0, Bool = 1, Int = 2, Enum = 3, Double = 4 };

    static constexpr int kTextLength = 31; ///< characters kept of name, label, group and display texts
    static constexpr int kMaxPrecision = 6;

    /// Everything that InitDouble takes. Texts are cut to kTextLength characters.
    struct Definition {
        std::string_view name;
        double defaultValue = 0.0;
        double min = 0.0;
        double max = 1.0;
        double step = 0.001; ///< display resolution; must be above 0
        std::string_view label;
        std::string_view group;
    };

    /// Makes this a double parameter that stands at its default. The decimals of the display come from the
    /// step: as many as make it a whole number, at most six.
    void InitDouble(const Definition& definition);

    /// Sets what kind of parameter this is; InitDouble makes it a double one unless it has been told.
    void SetType(Type kind) { type = kind; }

    /// Gives a text to one whole-numbered value. Text and label of that value then read so.
    void SetDisplayText(int forValue, std::string_view text);

    /// The value on 0..1, limited to the range first.
    [[nodiscard]] double GetNormalized() const;

    /// Takes a value from 0..1. Above 1 it is limited, below 0 it is not: hosts are trusted there. A NaN and
    /// a negative infinity would never leave the engine's smoothers again: false, and the old value stays.
    bool SetNormalized(double normalized);

    /// What SetNormalized would store, for any parameter but with NaN passed through.
    [[nodiscard]] double FromNormalized(double normalized) const;

    /// A plain value, limited to the range, on 0..1.
    [[nodiscard]] double ToNormalized(double plain) const;

    /// Takes a plain value, limited to the range. A NaN is ignored.
    void SetValue(double plain);

    /// The text of a value: one of the display texts if asked for and there is one, else the number with the
    /// parameter's decimals, with a point in every locale. Limited to kTextLength characters.
    [[nodiscard]] std::string DisplayText(double shown, bool isNormalized, bool useDisplayTexts) const;

    /// The unit, or nothing where the present value has a text of its own.
    [[nodiscard]] std::string_view LabelForHost() const { return LabelOf(value); }

    /// The same for any plain value: what an editor shows may differ from the present one.
    [[nodiscard]] std::string_view LabelOf(double plain) const;

    /// Whether SetDisplayText has given a text to any value.
    [[nodiscard]] bool HasDisplayTexts() const { return !displayTexts.empty(); }

    [[nodiscard]] bool HasDisplayTextFor(double plain) const { return FindDisplayText(plain) != nullptr; }

    /// The plain value that a text stands for: a display text, or a number (0 if it is none). The result is
    /// limited to the range unless it is NaN.
    [[nodiscard]] double ValueOfText(std::string_view text) const;

    [[nodiscard]] Type GetType() const { return type; }
    [[nodiscard]] double Value() const { return value; }
    [[nodiscard]] double Min() const { return min; }
    [[nodiscard]] double Max() const { return max; }
    [[nodiscard]] double Step() const { return step; }
    [[nodiscard]] double Shape() const { return shape; }
    [[nodiscard]] double Default() const { return defaultValue; }
    [[nodiscard]] int DisplayPrecision() const { return displayPrecision; }
    [[nodiscard]] const std::string& Name() const { return name; }
    [[nodiscard]] const std::string& Label() const { return label; }
    [[nodiscard]] const std::string& Group() const { return group; }
    [[nodiscard]] bool CanAutomate() const { return canAutomate; }

    /// Shows values with the opposite sign.
    void SetNegateDisplay(bool on) { negateDisplay = on; }
    [[nodiscard]] bool NegatesDisplay() const { return negateDisplay; }

private:
    struct TextOfValue {
        int value;
        std::string text;
    };

    [[nodiscard]] const TextOfValue* FindDisplayText(double shown) const;

    Type type = Type::None;
    double value = 0.0;
    double min = 0.0;
    double max = 1.0;
    double step = 1.0;
    double shape = 1.0;
    double defaultValue = 0.0;
    int displayPrecision = 0;
    std::string name;
    std::string label;
    std::string group;
    bool negateDisplay = false;
    bool canAutomate = true;
    std::vector<TextOfValue> displayTexts;
};

} // namespace Grimworks
