// Eight threads ask one machine at once, and every answer is that of one thread alone. scripts/threads runs
// this under the thread sanitizer, which sees the races that happen to do no harm.
//
// Side by side, while nobody changes the machine: the transforms, the axial and radial tests, validation and
// axis roles, the questions to the axes and the head, walks of the trees and their stacks, states and values
// of the nodes. `is_valid` also reads the process-wide flags word and the feedback callback, so these are set
// before.
//
// Not so: the update, `orientate`, `scale`, `reset` and all setters change the machine; saving is no constant
// operation. Whatever creates, clones, loads or frees uses the pools, which are the process's and have no
// lock. Wrapping works on a clone and so belongs to these, though its machine is constant: here one thread
// wraps at a time, while the others go on asking.
#include <k5ax/kinematics.h>

#include <atomic>
#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "support/near.h"
#include "support/random_machine.h"

namespace {

using k5ax_test::Random;
using vector_form::point;

using Point = Geometry::TPoint<double>;
using NodePtr = boost::shared_ptr<md::sg::node>;

constexpr int kThreads = 8;
constexpr int kRounds = 60;
const char* const kMachines[] = {"table_table_trunnion", "head_table_swivel", "head_table_inch",
                                 "head_head_fork"};

// What one thread has been told.
class Answers {
 public:
  void add(double value) { m_values.push_back(value); }
  void add(bool value) { m_values.push_back(value ? 1 : 0); }
  void add(int value) { m_values.push_back(value); }
  void add(const Point& p) { m_values.insert(m_values.end(), {p.x, p.y, p.z}); }
  void add(const Geometry::Matrix& m) {
    for (const double component : k5ax_test::components(m)) m_values.push_back(component);
  }
  bool operator==(const Answers& other) const { return m_values == other.m_values; }
  std::size_t size() const { return m_values.size(); }

 private:
  std::vector<double> m_values;
};

void ask_transforms(const md::CMachDef& machdef, Random& random, Answers& answers) {
  const Point p = point(random.position(300));
  const Point abc = point(random.angles());
  Point p_part;
  Point d_tool_part;
  machdef.Mach2PartCoords(p, abc, p_part, d_tool_part);
  answers.add(p_part);
  answers.add(d_tool_part);
  answers.add(machdef.Part2MachCoords(p, abc));
  answers.add(machdef.Part2MachTransform(abc));
  answers.add(machdef.Mach2PartTransform(p, abc));
  Point p_ctrl;
  machdef.Tool2CtrlPt(p_ctrl, p);
  answers.add(p_ctrl);
  answers.add(machdef.IsToolAxial(abc.x, abc.y, abc.z));
  answers.add(machdef.IsToolRadial(abc.x, abc.y, abc.z));
}

void ask_axes(const md::CMachDef& machdef, Answers& answers) {
  answers.add(machdef.is_valid());
  answers.add(machdef.mw_valid());
  answers.add(machdef.is_orthogonal());
  answers.add(static_cast<int>(machdef.getMachType()));
  answers.add(machdef.getToolDir());
  answers.add(machdef.getToolDirEx());
  boost::shared_ptr<md::CAxis2> first;
  boost::shared_ptr<md::CAxis2> second;
  machdef.getMWRotAxes(first, second);
  for (const auto& axis : {first, second, machdef.rotary_axis(), machdef.getPrimary()}) {
    answers.add(machdef.getAngle(axis, 1, 2, 3));
    answers.add(axis->GetAxisVector());
    answers.add(axis->GetBaseVector());
    answers.add(axis->is_valid());
    answers.add(axis->is_orthogonal());
    answers.add(static_cast<int>(axis->GetAxis()));
  }
  answers.add(machdef.head().tip);
  answers.add(k5ax_is_angled_head(&machdef.head()));
}

void ask_trees(const md::CMachDef& machdef, Answers& answers) {
  for (const NodePtr& root : machdef.SG()) {
    for (const NodePtr& n : md::sg::node::all_nodes(root)) {
      std::vector<Geometry::Matrix> stack;
      md::sg::node::transform_stack(n, stack);
      for (const Geometry::Matrix& node_to_parent : stack) answers.add(node_to_parent);
      node_state state{};
      answers.add(md::node_state_get(n, state));
      answers.add(state.value);
      answers.add(n->point_to_parent(Point(1, 2, 3)));
      answers.add(k5axSgNode_id(n.get()));
      answers.add(k5axSgNode_child_count(n.get()));
      answers.add(k5axSgNode_parent(n.get()) == n->parent().get());
    }
  }
  for (const auto& entry : md::CMachDef_IdAxisState_get(machdef)) answers.add(entry.second.value);
}

std::mutex pools;

void ask_wrapping(const md::CMachDef& machdef, Random& random, Answers& answers) {
  const Point p = point(random.position(300));
  Point p_out;
  Point rotary;
  double radius = 0;
  const std::lock_guard<std::mutex> one_at_a_time(pools);
  md::Cartesian2AxialRotaryVals(&machdef, p, Point(), random.below(3), 1, p_out, rotary, radius);
  answers.add(p_out);
  answers.add(rotary);
  answers.add(radius);
}

Answers ask_everything(const md::CMachDef& machdef) {
  Random random(8);
  Answers answers;
  for (int round = 0; round < kRounds; ++round) {
    for (int i = 0; i < 20; ++i) ask_transforms(machdef, random, answers);
    ask_axes(machdef, answers);
    ask_trees(machdef, answers);
    ask_wrapping(machdef, random, answers);
  }
  return answers;
}

// Runs `work` on every thread, all of them starting together.
void on_all_threads(const std::function<void(int)>& work) {
  std::atomic<int> ready{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      ++ready;
      while (ready < kThreads) std::this_thread::yield();
      work(i);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

class OneMachine : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    const std::string path = std::string(K5AX_MACHINES_FOLDER) + "/" + GetParam() + ".k5m";
    ASSERT_EQ(MachdefLoad(&machdef, path.c_str()), 1);
    ASSERT_TRUE(md::UpdateNodeAxes_(&machdef, Point(1, 2, 3), Point(0.1, 0.2, 0.3)));
  }

  md::CMachDef machdef;
};

TEST_P(OneMachine, AnswersEightThreadsAtOnceAsItAnswersOne) {
  const Answers alone = ask_everything(machdef);
  ASSERT_GT(alone.size(), 1000u * kRounds);
  std::vector<Answers> all(kThreads);
  on_all_threads([&](int i) { all[static_cast<std::size_t>(i)] = ask_everything(machdef); });
  for (const Answers& answers : all) EXPECT_TRUE(answers == alone);
}

// A machine and its clone share nothing, so one may be changed while the other is.
TEST_P(OneMachine, AndItsClonesAreChangedByAThreadEach) {
  std::vector<md::CMachDef> clones(kThreads);
  for (md::CMachDef& clone : clones) clone.clone(machdef, 3);
  std::vector<Answers> all(kThreads);
  on_all_threads([&](int i) {
    md::CMachDef& mine = clones[static_cast<std::size_t>(i)];
    Answers& answers = all[static_cast<std::size_t>(i)];
    Random random(9);
    for (int round = 0; round < 20 * kRounds; ++round) {
      answers.add(md::UpdateNodeAxes_(&mine, point(random.position(100)), point(random.angles())));
      Point xyz;
      Point abc;
      md::CMachDef_SG2MachCoords(mine, xyz, abc);
      answers.add(xyz);
      answers.add(abc);
    }
    mine.orientate(0.1, 0.2);
    answers.add(mine.getToolDirEx());
  });
  for (const Answers& answers : all) EXPECT_TRUE(answers == all.front());
  EXPECT_GT(all.front().size(), 100u * kRounds);
}

INSTANTIATE_TEST_SUITE_P(Shipped, OneMachine, testing::ValuesIn(kMachines));

}  // namespace
