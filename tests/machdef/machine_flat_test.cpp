// The flat functions on machine definitions.
#ifndef _WIN32
#include <dirent.h>
#endif

#include <cstddef>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <k5ax/machdef.h>

#include "axes/axis_support.h"
#include "foundation/utility_guard.h"
#include "machdef/machine_support.h"

namespace {

using Geometry::TPoint;
using k5ax_test::axes_of;
using k5ax_test::AxisPool;
using k5ax_test::AxisPtr;
using k5ax_test::Bytes;
using k5ax_test::clone_of;
using k5ax_test::expect_head;
using k5ax_test::full_machine;
using k5ax_test::listed_machine;
using k5ax_test::NodePtr;
using k5ax_test::nodes_of;
using k5ax_test::saved;
using md::CMachDef;

// What a host holds in C++ is the class itself.
static_assert(std::is_same<k5ax_machdef, CMachDef>::value, "k5ax_machdef is md::CMachDef");

TEST(FlatCreate, MakesAnEmptyMachine) {
  CMachDef* machdef = k5axCMachDef_create();
  ASSERT_NE(machdef, nullptr);
  CMachDef fresh;
  EXPECT_SAME_BYTES(saved(*machdef), saved(fresh));
  k5axCMachDef_free(&machdef);
}

TEST(FlatFree, DestroysTheMachine) {
  AxisPool::drain();
  CMachDef* machdef = k5axCMachDef_create();
  k5ax_test::give_axes(*machdef);
  k5axCMachDef_free(&machdef);
  EXPECT_EQ(AxisPool::size(), 5u);  // it gave its axes back, as a dying machine does
}

// Deliberate: the host forgets the pointer itself, and may tell by the address which machine went.
TEST(FlatFree, LeavesTheCallersPointer) {
  CMachDef* machdef = k5axCMachDef_create();
  const CMachDef* const address = machdef;
  k5axCMachDef_free(&machdef);
  EXPECT_EQ(machdef, address);
}

TEST(FlatFree, OfAPointerToNullDoesNothing) {
  CMachDef* machdef = nullptr;
  k5axCMachDef_free(&machdef);
  EXPECT_EQ(machdef, nullptr);
}

TEST(FlatClone, TakesMachineAndScene) {
  const auto source = full_machine();
  CMachDef target;
  k5axCMachDef_clone(&target, source.get());
  EXPECT_SAME_BYTES(saved(target), saved(*source));
  EXPECT_TRUE(target.getPrimary());
  EXPECT_TRUE(target.SG()[0]);
}

TEST(FlatClone, IntoNullDoesNothing) {
  const auto source = full_machine();
  EXPECT_NO_THROW(k5axCMachDef_clone(nullptr, source.get()));
  EXPECT_NO_THROW(k5axCMachDef_clone_ex(nullptr, source.get(), 3));
}

TEST(FlatClone, IntoItselfChangesNothing) {
  const auto machdef = listed_machine();
  const Bytes before = saved(*machdef);
  k5axCMachDef_clone(machdef.get(), machdef.get());
  EXPECT_SAME_BYTES(saved(*machdef), before);
}

TEST(FlatCloneOfParts, TakesTheMachineAtOne) {
  const auto source = full_machine();
  CMachDef target;
  k5axCMachDef_clone_ex(&target, source.get(), 1);
  EXPECT_EQ(target.getMachType(), MC_TT);
  EXPECT_TRUE(target.getPrimary());
  EXPECT_FALSE(target.SG()[0]);
}

TEST(FlatCloneOfParts, TakesTheSceneAtTwo) {
  const auto source = full_machine();
  CMachDef target;
  k5axCMachDef_clone_ex(&target, source.get(), 2);
  EXPECT_EQ(target.getMachType(), MC_UNDEFINED);
  EXPECT_FALSE(target.getPrimary());
  EXPECT_TRUE(target.SG()[0]);
}

TEST(FlatCloneOfParts, OnlyResetsAtZero) {
  const auto source = full_machine();
  const auto target = listed_machine();
  k5axCMachDef_clone_ex(target.get(), source.get(), 0);
  EXPECT_EQ(target->getMachType(), MC_UNDEFINED);
  EXPECT_FALSE(target->getPrimary());
  EXPECT_FALSE(target->SG()[0]);
}

TEST(FlatMachineFlags, AreReadAndReplacedAsAWhole) {
  CMachDef machdef;
  machdef.flags(0xFF00FFFFu);
  k5axCMachDef_flags_set(&machdef, 0xCAFEu);
  EXPECT_EQ(machdef.flags(), 0xCAFEu);
  machdef.flags(0xF0u);
  EXPECT_EQ(k5axCMachDef_flags_get(&machdef), 0xF0u);
}

TEST(FlatMachineFlags, OfNullAreZeroAndNotSet) {
  EXPECT_EQ(k5axCMachDef_flags_get(nullptr), 0u);
  EXPECT_NO_THROW(k5axCMachDef_flags_set(nullptr, 3));
}

TEST(FlatMode, IsTheMachines) { EXPECT_EQ(static_cast<int>(k5axCMachDef_mode(full_machine().get())), 5); }

TEST(FlatMode, OfNullIsMinusOne) { EXPECT_EQ(static_cast<int>(k5axCMachDef_mode(nullptr)), -1); }

TEST(FlatType, IsTheMachines) {
  CMachDef machdef;
  machdef.setMachType(MC_HH);
  EXPECT_EQ(k5axCMachDef_type(&machdef), MC_HH);
}

TEST(FlatType, OfNullIsMinusOne) { EXPECT_EQ(static_cast<int>(k5axCMachDef_type(nullptr)), -1); }

// Of null it is not asked: this is the one getter that does not test for null, which hosts know.
TEST(FlatDiscipline, IsTheMachines) {
  EXPECT_EQ(static_cast<int>(k5axCMachDef_discipline(full_machine().get())), 2);
}

TEST(FlatHead, IsTheMachinesOwn) {
  CMachDef machdef;
  EXPECT_EQ(k5axCMachDef_head(&machdef), &machdef.head());
  EXPECT_EQ(k5axCMachDef_head_const(&machdef), &machdef.head());
}

TEST(FlatHead, MayBeWrittenThrough) {
  CMachDef machdef;
  k5axCMachDef_head(&machdef)->tool_dir = {1, 0, 0};
  EXPECT_NEAR_POINT(machdef.getToolDir(), (TPoint<double>(1, 0, 0)), 0.0);
}

TEST(FlatHead, OfNullIsNull) {
  EXPECT_EQ(k5axCMachDef_head(nullptr), nullptr);
  EXPECT_EQ(k5axCMachDef_head_const(nullptr), nullptr);
}

// Mind the order of the arguments: the index comes first, as hosts have it.
TEST(FlatAxis, IsThePrimaryAtZeroAndTheSecondaryAtOne) {
  const auto machdef = full_machine();
  EXPECT_EQ(k5axCMachDef_axis(0, machdef.get()), machdef->getPrimary().get());
  EXPECT_EQ(k5axCMachDef_axis(1, machdef.get()), machdef->getSecondary().get());
}

// Deliberate: the linear axes are reached through the class alone.
TEST(FlatAxis, IsNullAtAnyOtherIndex) {
  const auto machdef = full_machine();
  int indices = 0;
  for (const int index : {-1, 2, 3, 4, 1000000}) {
    EXPECT_EQ(k5axCMachDef_axis(index, machdef.get()), nullptr) << "index " << index;
    ++indices;
  }
  EXPECT_EQ(indices, 5);
}

TEST(FlatAxis, IsNullWhereItIsMissing) {
  CMachDef machdef;
  EXPECT_EQ(k5axCMachDef_axis(0, &machdef), nullptr);
  EXPECT_EQ(k5axCMachDef_axis(1, &machdef), nullptr);
}

TEST(FlatAxis, OfNullIsNull) {
  EXPECT_EQ(k5axCMachDef_axis(0, nullptr), nullptr);
  EXPECT_EQ(k5axCMachDef_axis(1, nullptr), nullptr);
}

TEST(FlatAxis, IsBorrowed) {
  const auto machdef = full_machine();
  ASSERT_EQ(machdef->getPrimary().use_count(), 2);  // the machine's, and the copy asked here
  k5axCMachDef_axis(0, machdef.get());
  k5axCMachDef_rotary_axis(machdef.get());
  EXPECT_EQ(machdef->getPrimary().use_count(), 2);
  EXPECT_EQ(machdef->getSecondary().use_count(), 2);
}

TEST(FlatRotaryAxis, IsTheOneThatTurnsThePart) {
  const auto machdef = full_machine();  // a table-table machine
  EXPECT_EQ(k5axCMachDef_rotary_axis(machdef.get()), machdef->getSecondary().get());
  EXPECT_EQ(k5axCMachDef_rotary_axis_const(machdef.get()), machdef->getSecondary().get());
  machdef->setMachType(MC_HT);
  EXPECT_EQ(k5axCMachDef_rotary_axis(machdef.get()), machdef->getPrimary().get());
  EXPECT_EQ(k5axCMachDef_rotary_axis_const(machdef.get()), machdef->getPrimary().get());
}

TEST(FlatRotaryAxis, IsNullWhereThereIsNone) {
  CMachDef machdef;
  EXPECT_EQ(k5axCMachDef_rotary_axis(&machdef), nullptr);
  EXPECT_EQ(k5axCMachDef_rotary_axis_const(&machdef), nullptr);
}

TEST(FlatRotaryAxis, OfNullIsNull) {
  EXPECT_EQ(k5axCMachDef_rotary_axis(nullptr), nullptr);
  EXPECT_EQ(k5axCMachDef_rotary_axis_const(nullptr), nullptr);
}

TEST(FlatOrthogonal, HoldsForAFreshMachine) {
  CMachDef machdef;
  EXPECT_TRUE(k5axCMachDef_orthogonal(&machdef));
}

TEST(FlatOrthogonal, NeedsBothAxesOrthogonal) {
  const auto machdef = full_machine();
  EXPECT_TRUE(k5axCMachDef_orthogonal(machdef.get()));

  machdef->getSecondary()->SetAxisVector({-1, 0, 0});
  EXPECT_FALSE(k5axCMachDef_orthogonal(machdef.get()));

  machdef->getSecondary()->SetAxisVector({1, 0, 0});
  machdef->getPrimary()->SetAxisVector({0, 1, 0});
  EXPECT_FALSE(k5axCMachDef_orthogonal(machdef.get()));
}

TEST(FlatOrthogonal, LooksAtASecondaryThatIsAlone) {
  const auto machdef = full_machine();
  machdef->setPrimary(AxisPtr());
  EXPECT_TRUE(k5axCMachDef_orthogonal(machdef.get()));
  machdef->getSecondary()->SetAxisVector({-1, 0, 0});
  EXPECT_FALSE(k5axCMachDef_orthogonal(machdef.get()));
}

TEST(FlatOrthogonal, OfNullIsFalse) { EXPECT_FALSE(k5axCMachDef_orthogonal(nullptr)); }

TEST(FlatOrientate, TurnsByTheFirstAngleAboutThePrimary) {
  // A table-table machine turns the secondary's direction by minus the first angle about the primary's: about
  // Z, a quarter turn back takes X to -Y. One product of values up to 1.
  const auto machdef = full_machine();
  EXPECT_TRUE(k5axCMachDef_orientate(machdef.get(), math::m_pi / 2, 0.3));
  EXPECT_NEAR_POINT(machdef->getSecondary()->GetAxisVector(), (TPoint<double>(0, -1, 0)), 1e-15);
}

TEST(FlatOrientate, TurnsByTheSecondAngleAboutTheSecondary) {
  // A head-table machine turns the tool by the second angle about the secondary's direction: about X, a
  // quarter turn takes Z to -Y.
  CMachDef machdef;
  k5ax_test::give_axes(machdef);
  machdef.setMachType(MC_HT);
  EXPECT_TRUE(k5axCMachDef_orientate(&machdef, 0.3, math::m_pi / 2));
  EXPECT_NEAR_POINT(machdef.getToolDir(), (TPoint<double>(0, -1, 0)), 1e-15);
}

TEST(FlatOrientate, AnswersFalseForATypeThatIsNone) {
  CMachDef machdef;
  EXPECT_FALSE(k5axCMachDef_orientate(&machdef, 0.1, 0.2));
}

TEST(FlatOrientate, OfNullIsFalse) { EXPECT_FALSE(k5axCMachDef_orientate(nullptr, 0.1, 0.2)); }

TEST(FlatScene, IsTheRootOfEachTree) {
  const auto machdef = full_machine();
  EXPECT_EQ(k5axCMachDef_SG(machdef.get(), 0), machdef->SG()[0].get());
  EXPECT_EQ(k5axCMachDef_SG(machdef.get(), 1), machdef->SG()[1].get());
}

TEST(FlatScene, IsNullForAnEmptyTree) {
  CMachDef machdef;
  EXPECT_EQ(k5axCMachDef_SG(&machdef, 0), nullptr);
  EXPECT_EQ(k5axCMachDef_SG(&machdef, 1), nullptr);
}

TEST(FlatScene, OfNullIsNull) {
  EXPECT_EQ(k5axCMachDef_SG(nullptr, 0), nullptr);
  EXPECT_EQ(k5axCMachDef_SG(nullptr, 1), nullptr);
}

TEST(FlatTool, IsTheToolNode) {
  const auto machdef = full_machine();
  EXPECT_EQ(k5axCMachDef_Tool(machdef.get()), machdef->tool_node().get());
}

TEST(FlatTool, IsNullWhereThereIsNone) {
  CMachDef machdef;
  EXPECT_EQ(k5axCMachDef_Tool(&machdef), nullptr);
}

TEST(FlatTool, OfNullIsNull) { EXPECT_EQ(k5axCMachDef_Tool(nullptr), nullptr); }

TEST(FlatAxisNodeCast, FindsTheAxisNodesOfAMachine) {
  const auto machdef = full_machine();
  int axis_nodes = 0;
  for (const NodePtr& n : nodes_of(*machdef)) {
    md::sg::tnode<md::CAxis2>* const cast = k5axSgNode_NodeAxis_cast(n.get());
    const bool is_axis =
        n->id() == k5ax_test::kLinearX || n->id() == k5ax_test::kRotaryC || n->id() == k5ax_test::kRotaryA;
    EXPECT_EQ(cast != nullptr, is_axis) << "node " << n->id();
    if (cast == nullptr) continue;
    EXPECT_EQ(static_cast<md::sg::node*>(cast), n.get());
    ++axis_nodes;
  }
  EXPECT_EQ(axis_nodes, 3);
}

TEST(FlatAxisNodeCast, OfNullIsNull) { EXPECT_EQ(k5axSgNode_NodeAxis_cast(nullptr), nullptr); }

// Files.
class FlatFile : public testing::Test {
 protected:
  FlatFile()
      : m_path(testing::TempDir() + "flat_" + testing::UnitTest::GetInstance()->current_test_info()->name() +
               ".mach") {
    std::remove(m_path.c_str());
  }
  ~FlatFile() override { std::remove(m_path.c_str()); }

  const char* path() const { return m_path.c_str(); }

  Bytes content() const {
    std::ifstream file(m_path, std::ios::binary);
    EXPECT_TRUE(file.is_open());
    return Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }

  void put(const Bytes& bytes) const {
    std::ofstream file(m_path, std::ios::binary);
    file << bytes;
    ASSERT_TRUE(file.good());
  }

 private:
  const std::string m_path;
};

#ifndef _WIN32
std::size_t open_descriptors() {
  std::size_t count = 0;
  DIR* const folder = opendir("/proc/self/fd");
  if (folder == nullptr) {
    ADD_FAILURE() << "no /proc/self/fd";
    return 0;
  }
  while (readdir(folder) != nullptr) ++count;
  closedir(folder);
  return count;
}
#endif

TEST_F(FlatFile, SavedAndLoadedIsTheSameMachine) {
  const auto machdef = full_machine();
  ASSERT_EQ(MachdefSave(machdef.get(), path()), 1);

  CMachDef loaded;
  ASSERT_EQ(MachdefLoad(&loaded, path()), 1);

  EXPECT_EQ(loaded.getMachType(), MC_TT);
  EXPECT_EQ(static_cast<int>(loaded.get_mode()), 5);
  EXPECT_EQ(static_cast<int>(loaded.discipline()), 2);
  EXPECT_FALSE(loaded.isMetric());
  EXPECT_NEAR_POINT(loaded.loading_vector(), (TPoint<double>(21, 22, 23)), 0.0);
  EXPECT_NEAR_POINT(loaded.mwZeroPos(), (TPoint<double>(31, 32, 33)), 0.0);
  expect_head(loaded.head(), k5ax_test::numbered_head());
  for (std::size_t i = 0; i < 5; ++i) {
    ASSERT_TRUE(axes_of(loaded)[i]) << "axis " << i;
    k5ax_test::expect_equal_records(*axes_of(loaded)[i], *axes_of(*machdef)[i]);
  }
  const std::vector<NodePtr> nodes = nodes_of(loaded);
  ASSERT_EQ(nodes.size(), k5ax_test::kSceneNodes);
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    EXPECT_EQ(nodes[i]->id(), nodes_of(*machdef)[i]->id());
    EXPECT_EQ(nodes[i]->value(), nodes_of(*machdef)[i]->value());
  }
  EXPECT_EQ(loaded.SG_RotAxs()[0], k5ax_test::find_node(loaded, k5ax_test::kRotaryC));
  EXPECT_EQ(loaded.SG_RotAxs()[1], k5ax_test::find_node(loaded, k5ax_test::kRotaryA));
  EXPECT_EQ(loaded.tool_node(), k5ax_test::find_node(loaded, k5ax_test::kToolNode));
}

TEST_F(FlatFile, SavedHoldsTheRecordAndNothingElse) {
  const auto machdef = full_machine();
  ASSERT_EQ(MachdefSave(machdef.get(), path()), 1);
  EXPECT_SAME_BYTES(content(), saved(*machdef));
}

TEST_F(FlatFile, SavingChangesNothingInTheMachine) {
  const auto machdef = full_machine();
  const Bytes before = saved(*machdef);
  ASSERT_EQ(MachdefSave(machdef.get(), path()), 1);
  EXPECT_SAME_BYTES(saved(*machdef), before);
}

TEST_F(FlatFile, LoadedAxesHaveNoOwner) {
  AxisPool::drain();
  ASSERT_EQ(MachdefSave(full_machine().get(), path()), 1);
  AxisPool::drain();
  CMachDef loaded;
  ASSERT_EQ(MachdefLoad(&loaded, path()), 1);
  for (const AxisPtr& axis : axes_of(loaded)) EXPECT_EQ(axis->machdef(), nullptr);
}

TEST_F(FlatFile, LoadedNodesAreListed) {
  ASSERT_EQ(MachdefSave(full_machine().get(), path()), 1);
  CMachDef loaded;
  ASSERT_EQ(MachdefLoad(&loaded, path()), 1);
  const NodePtr leaf = k5ax_test::find_node(loaded, k5ax_test::kPartLeaf);
  loaded.reset();
  EXPECT_EQ(md::sg::node::create(), leaf);  // listed last, so given back last and first out of the pool
}

// A load that fails answers 0 and says nothing; what the machine holds depends on how far it came.
class FailedLoad : public FlatFile {};

TEST_F(FailedLoad, OfAMissingFileLeavesTheMachine) {
  const auto machdef = full_machine();
  const Bytes before = saved(*machdef);
  EXPECT_EQ(MachdefLoad(machdef.get(), path()), 0);
  EXPECT_SAME_BYTES(saved(*machdef), before);
}

TEST_F(FailedLoad, OfAFolderLeavesTheMachine) {
  const auto machdef = full_machine();
  const Bytes before = saved(*machdef);
  EXPECT_EQ(MachdefLoad(machdef.get(), testing::TempDir().c_str()), 0);
  EXPECT_SAME_BYTES(saved(*machdef), before);
}

TEST_F(FailedLoad, OfANullOrEmptyPathLeavesTheMachine) {
  const auto machdef = full_machine();
  const Bytes before = saved(*machdef);
  EXPECT_EQ(MachdefLoad(machdef.get(), nullptr), 0);
  EXPECT_EQ(MachdefLoad(machdef.get(), ""), 0);
  EXPECT_SAME_BYTES(saved(*machdef), before);
}

TEST_F(FailedLoad, OfAnEmptyFileAnswersZero) {
  put(Bytes());
  CMachDef machdef;
  EXPECT_EQ(MachdefLoad(&machdef, path()), 0);
}

// Deliberate: a machine that a damaged file was read into is not reset; a host looks at the answer.
TEST_F(FailedLoad, OfATruncatedFileLeavesWhatWasRead) {
  // Version, type, mode and unit are four bytes each, the loading vector follows: cut within the work zero.
  Bytes bytes = saved(*full_machine());
  bytes.resize(16 + 24 + 8);
  put(bytes);
  CMachDef machdef;
  machdef.mwZeroPos({-1, -2, -3});

  EXPECT_EQ(MachdefLoad(&machdef, path()), 0);

  EXPECT_EQ(machdef.getMachType(), MC_TT);
  EXPECT_EQ(static_cast<int>(machdef.get_mode()), 5);
  EXPECT_FALSE(machdef.isMetric());
  EXPECT_NEAR_POINT(machdef.loading_vector(), (TPoint<double>(21, 22, 23)), 0.0);
  EXPECT_NEAR_POINT(machdef.mwZeroPos(), (TPoint<double>(-1, -2, -3)), 0.0);
  expect_head(machdef.head(), k5ax_test::straight_head());
}

TEST_F(FailedLoad, ByARefusalOfTheRecordAnswersZeroToo) {
  // Not the stream's own exception: a lone node of kind 5. It follows 4 ints, 2 points, the head, 5 empty
  // slots and the count, as 4 bytes.
  CMachDef one_node;
  one_node.SG()[0] = k5ax_test::plain_node(1);
  Bytes bytes = saved(one_node);
  const std::size_t kind_at = 4 * 4 + 2 * 24 + 136 + 5 * 4 + 4;
  ASSERT_EQ(bytes[kind_at], 0);
  bytes[kind_at] = 5;
  put(bytes);

  CMachDef machdef;
  EXPECT_EQ(MachdefLoad(&machdef, path()), 0);
}

class FailedSave : public FlatFile {};

TEST_F(FailedSave, IntoAMissingFolderAnswersZero) {
  CMachDef machdef;
  const std::string missing = testing::TempDir() + "no_such_folder/machine.mach";
  EXPECT_EQ(MachdefSave(&machdef, missing.c_str()), 0);
}

TEST_F(FailedSave, OntoAFolderAnswersZero) {
  CMachDef machdef;
  EXPECT_EQ(MachdefSave(&machdef, testing::TempDir().c_str()), 0);
}

TEST_F(FailedSave, ToANullOrEmptyPathAnswersZero) {
  CMachDef machdef;
  EXPECT_EQ(MachdefSave(&machdef, nullptr), 0);
  EXPECT_EQ(MachdefSave(&machdef, ""), 0);
}

#ifndef _WIN32
TEST_F(FailedSave, OntoAFullDeviceAnswersZero) {
  // What is buffered is refused when the stream closes, and that counts as well.
  CMachDef machdef;
  EXPECT_EQ(MachdefSave(&machdef, "/dev/full"), 0);
}

TEST_F(FlatFile, IsClosedWhenTheCallReturns) {
  const auto machdef = full_machine();
  Bytes truncated = saved(*machdef);
  truncated.resize(100);
  const std::size_t before = open_descriptors();

  EXPECT_EQ(MachdefSave(machdef.get(), path()), 1);
  EXPECT_EQ(open_descriptors(), before);
  CMachDef loaded;
  EXPECT_EQ(MachdefLoad(&loaded, path()), 1);
  EXPECT_EQ(open_descriptors(), before);

  put(truncated);
  EXPECT_EQ(MachdefLoad(&loaded, path()), 0);
  EXPECT_EQ(MachdefSave(machdef.get(), "/dev/full"), 0);
  EXPECT_EQ(open_descriptors(), before);
}
#endif

TEST_F(FlatFile, FailuresAreReportedThroughNoChannel) {
  const k5ax_test::UtilityGuard guard;
  int calls = 0;
  CUtility::flags(6);
  CUtility::set_feedback_cbk([&calls](const char*) { ++calls; });
  CUtility::set_error_cbk([&calls](const char*, short) { ++calls; });
  CUtility::set_assertion_handler_cbk([&calls](const char*, const char*, const char*, long) { ++calls; });
  CMachDef machdef;

  EXPECT_EQ(MachdefLoad(&machdef, path()), 0);
  EXPECT_EQ(MachdefSave(&machdef, "/dev/full"), 0);
  put("123");
  EXPECT_EQ(MachdefLoad(&machdef, path()), 0);

  EXPECT_EQ(calls, 0);
}

}  // namespace
