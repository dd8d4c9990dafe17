#include "plugin/ThudForge.h"
#include "tests/support/ReferenceCase.h"

#include <gtest/gtest.h>

#include <memory>

using namespace Grimworks;
using namespace Grimworks::Testing;

namespace {

const std::filesystem::path kFolder = std::filesystem::path(THUDFORGE_SOURCE_DIR) / "tests/data/reference";

/// As the module's entry point does; the close opcode gives the instance back.
AEffect* MakeInstrument(audioMasterCallback host) {
    auto plug = std::make_unique<ThudForge>(host);
    plug->FillUnusedPresets("Empty");
    return plug.release()->Effect();
}

class ReferenceRender : public testing::TestWithParam<std::string> {};

} // namespace

TEST_P(ReferenceRender, AgreesWithTheSlowComputation) {
    const ReferenceCase reference = LoadReferenceCase(kFolder, GetParam());
    EXPECT_LT(WorstDifference(reference, PlayReferenceCase(reference, MakeInstrument)), 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Cases, ReferenceRender, testing::ValuesIn(ReferenceCaseNames(kFolder)),
                         [](const testing::TestParamInfo<std::string>& reference) {
                             std::string name = reference.param;
                             for (char& c : name) {
                                 if (c == '-') c = '_';
                             }
                             return name;
                         });
