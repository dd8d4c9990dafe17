#include "tools/ParameterManual.h"

#include "core/FileBytes.h"

#include <gtest/gtest.h>

namespace Grimworks {
namespace {

TEST(ParameterManual, IsUpToDate) {
    std::vector<std::uint8_t> bytes;
    ASSERT_TRUE(ReadFileBytes(THUDFORGE_SOURCE_DIR "/docs/parameters.md", bytes));
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), ParameterManual::Text())
        << "build the target list_parameters and run: list_parameters docs/parameters.md";
}

TEST(ParameterManual, HasALineForEachParameterAndChoice) {
    const std::string text = ParameterManual::Text();
    for (const ParameterInfo& row : kParameterTable) {
        EXPECT_NE(text.find("| " + std::string(row.name) + " | `" + std::string(row.key) + "` |"),
                  std::string::npos);
    }
    for (const CurveInfo& curve : kCurveInfos)
        EXPECT_NE(text.find("| " + std::string(curve.name) + " |"), std::string::npos);
}

} // namespace
} // namespace Grimworks
