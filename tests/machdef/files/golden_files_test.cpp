// The files in golden/: they were written once, by no code of the library, and are read and written alike for
// ever.

#include <cmath>
#include <fstream>
#include <regex>
#include <sstream>

#include <gtest/gtest.h>

#include "machdef/files/golden_machines.h"
#include "machdef/files/memory_stream.h"
#include "platform/scratch.h"

using namespace k5ax_test;
using Geometry::TPoint;
using md::CMachDef;

namespace {

std::string golden(const std::string& file) { return std::string(K5AX_GOLDEN_FOLDER "/") + file; }

class GoldenFile : public testing::TestWithParam<GoldenMachine> {};

struct Loaded : CMachDef {
  explicit Loaded(const std::string& file) { EXPECT_EQ(MachdefLoad(this, golden(file).c_str()), 1) << file; }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Files, GoldenFile, testing::ValuesIn(golden_machines()),
                         [](const testing::TestParamInfo<GoldenMachine>& machine) {
                           return machine.param.file;
                         });

TEST_P(GoldenFile, IsLoaded) {
  CMachDef machine;
  EXPECT_EQ(MachdefLoad(&machine, golden(GetParam().file).c_str()), 1);
}

TEST_P(GoldenFile, IsSavedByteForByteAsItWas) {
  const ScratchFolder folder;
  Loaded machine(GetParam().file);
  ASSERT_EQ(MachdefSave(&machine, (folder / "saved").c_str()), 1);
  EXPECT_SAME_BYTES(contents(folder / "saved"), contents(golden(GetParam().file)));
}

TEST_P(GoldenFile, IsWhatTheSecondWriterPacks) {
  EXPECT_SAME_BYTES(contents(golden(GetParam().file)), pack(GetParam().record));
}

TEST_P(GoldenFile, IsClonedByteForByte) {
  Loaded machine(GetParam().file);
  CMachDef clone;
  clone.clone(machine, 3);
  MachineRecord expected = GetParam().record;
  if (GetParam().file == "odd") {
    // A clone finds its rotary nodes by their id among the axis nodes, and this one names a plain node; and
    // it normalises the direction of an axis.
    expected.rotary_nodes = {-1, -1};
    expected.axes[2].axis.vector = {0.6, 0.8, 0};
  }
  EXPECT_SAME_BYTES(saved(clone), pack(expected));
}

TEST(GoldenFresh, IsAFreshMachine) {
  Loaded machine("fresh");
  EXPECT_EQ(machine.getMachType(), MC_UNDEFINED);
  EXPECT_EQ(static_cast<int>(machine.get_mode()), -1);
  EXPECT_TRUE(machine.isMetric());
  EXPECT_EQ(machine.getToolDirEx(), (TPoint<double>(0, 0, 1)));
  EXPECT_EQ(machine.head().ref_dir, (TPoint<double>(1, 0, 0)));
  EXPECT_FALSE(machine.getPrimary() || machine.getSecondary() || machine.SG()[0] || machine.SG()[1]);
  CMachDef fresh;
  EXPECT_SAME_BYTES(saved(fresh), contents(golden("fresh")));
}

// The page that says how files are made shows this one; a line of its listing is an offset, then sixteen
// bytes.
TEST(GoldenFresh, IsShownByteForByteInTheFileFormatsPage) {
  std::ifstream page(K5AX_FILE_FORMAT_PAGE);
  const std::regex line_of_bytes("([0-9a-f]{3})  (([0-9a-f]{2} )+) .*");
  Bytes shown;
  for (std::string line; std::getline(page, line);) {
    std::smatch parts;
    if (!std::regex_match(line, parts, line_of_bytes)) continue;
    EXPECT_EQ(std::stoul(parts[1].str(), nullptr, 16), shown.size()) << line;
    std::istringstream bytes(parts[2].str());
    for (std::string byte; bytes >> byte;) shown.push_back(static_cast<char>(std::stoi(byte, nullptr, 16)));
  }
  EXPECT_SAME_BYTES(shown, contents(golden("fresh")));
}

TEST(GoldenRich, IsTheMachineMadeThroughTheClassInterface) {
  CMachDef machine;
  make_rich(machine);
  EXPECT_SAME_BYTES(saved(machine), contents(golden("rich")));
}

TEST(GoldenTrunnion, HasItsFields) {
  Loaded machine("trunnion");
  EXPECT_EQ(machine.getMachType(), MC_TT);
  EXPECT_TRUE(machine.isMetric());
  EXPECT_EQ(machine.mwZeroPos(), (TPoint<double>(250, -125, 80.5)));
  ASSERT_TRUE(machine.getPrimary() && machine.getSecondary() && machine.xyz_axes()[2]);
  EXPECT_EQ(machine.getPrimary()->GetAxis(), AXIS_A);
  EXPECT_EQ(machine.getPrimary()->GetAxisLocation(), TABLE);
  EXPECT_EQ(machine.getPrimary()->mode(), ROTARY);
  EXPECT_EQ(machine.getPrimary()->GetBaseVector(), (TPoint<double>(0, -35.25, -45.125)));
  EXPECT_EQ(machine.getPrimary()->GetMin(), -2.0943951023931953);
  EXPECT_EQ(machine.getSecondary()->GetAxis(), AXIS_C);
  EXPECT_EQ(machine.getSecondary()->GetMax(), 6.283185307179586);
  EXPECT_EQ(machine.xyz_axes()[2]->GetAxis(), AXIS_Z);
  EXPECT_EQ(machine.xyz_axes()[2]->GetMin(), -350);
  EXPECT_EQ(machine.xyz_axes()[2]->mode(), LINEAR);
  EXPECT_EQ(static_cast<int>(machine.discipline()), 1);
}

TEST(GoldenTrunnion, IsValid) {
  Loaded machine("trunnion");
  EXPECT_TRUE(machine.is_valid());
}

TEST(GoldenFork, HasItsFields) {
  Loaded machine("fork");
  EXPECT_EQ(machine.getMachType(), MC_HH);
  EXPECT_FALSE(machine.isMetric());
  EXPECT_EQ(machine.loading_vector(), (TPoint<double>(0, 0, 12.5)));
  EXPECT_EQ(machine.head().b_angle, 0.7853981633974483);
  EXPECT_EQ(machine.head().tip, (TPoint<double>(1.4142135623730951, 0, 5.414213562373095)));
  ASSERT_TRUE(machine.tool_node());
  EXPECT_EQ(machine.tool_node()->id(), 6);
  EXPECT_EQ(machine.tool_node()->payload().length2, 2);
  EXPECT_EQ(machine.tool_node()->parent(), machine.SG_RotAxs()[1]);
  EXPECT_EQ(machine.SG_RotAxs()[1]->parent(), machine.SG_RotAxs()[0]);
  ASSERT_TRUE(machine.SG()[1]);
  EXPECT_EQ(machine.SG()[1]->id(), 7);
  EXPECT_FALSE(machine.xyz_axes()[0]);
}

TEST(GoldenFork, IsValid) {
  Loaded machine("fork");
  EXPECT_TRUE(machine.is_valid());
}

TEST(GoldenOdd, HasItsFields) {
  Loaded machine("odd");
  EXPECT_EQ(static_cast<int>(machine.getMachType()), 7);
  EXPECT_EQ(machine.loading_vector().y, 5e-324);
  EXPECT_TRUE(std::signbit(machine.loading_vector().x));
  EXPECT_FALSE(machine.getSecondary());
  ASSERT_TRUE(machine.xyz_axes()[0]);
  EXPECT_EQ(machine.xyz_axes()[0]->GetAxis(), AXIS_DUMMY);
  EXPECT_EQ(machine.xyz_axes()[0]->GetAxisVector(), (TPoint<double>(3, 4, 0)));
  EXPECT_FALSE(machine.SG_RotAxs()[0]);
  ASSERT_TRUE(machine.SG_RotAxs()[1]);
  EXPECT_EQ(machine.SG_RotAxs()[1]->id(), -999);
}

TEST(GoldenOdd, IsNotValid) {
  Loaded machine("odd");
  EXPECT_FALSE(machine.is_valid());
}
