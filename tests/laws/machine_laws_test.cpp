// Laws of a whole machine: what is copied, saved or converted and comes back.
#include <k5ax/kinematics.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "examples/machine_units.h"
#include "laws/generators.h"
#include "laws/ulps.h"
#include "support/near.h"
#include "support/use_machine.h"

namespace {

using k5ax_test::bytes_of;
using k5ax_test::NodePtr;
using k5ax_test::Point;
using k5ax_test::read_bytes;
using laws::unit_of_last_place;
using vector_form::point;
using vector_form::vec;
using vector_form::Vec;

// Everything that the machine answers at one position, to the bit.
std::vector<double> answers(md::CMachDef& machdef, const Point& p, const Point& abc) {
  std::vector<double> all;
  const auto add = [&all](const Point& q) { all.insert(all.end(), {q.x, q.y, q.z}); };
  Point p_part;
  Point d_tool_part;
  machdef.Mach2PartCoords(p, abc, p_part, d_tool_part);
  add(p_part);
  add(d_tool_part);
  add(machdef.Part2MachCoords(p, abc));
  Point p_ctrl;
  machdef.Tool2CtrlPt(p_ctrl, p);
  add(p_ctrl);
  all.push_back(machdef.IsToolAxial(abc.x, abc.y, abc.z) ? 1 : 0);
  all.push_back(machdef.IsToolRadial(abc.x, abc.y, abc.z) ? 1 : 0);
  all.push_back(machdef.is_valid() ? 1 : 0);

  Point p_wrapped;
  Point rotary;
  double radius = 0;
  md::Cartesian2AxialRotaryVals(&machdef, p, abc, 0, 1, p_wrapped, rotary, radius);
  add(p_wrapped);
  add(rotary);
  all.push_back(radius);

  all.push_back(md::UpdateNodeAxes_(&machdef, p, abc) ? 1 : 0);
  Point xyz;
  Point angles;
  md::CMachDef_SG2MachCoords(machdef, xyz, angles);
  add(xyz);
  add(angles);
  for (const auto& root : machdef.SG())
    for (const NodePtr& n : md::sg::node::all_nodes(root))
      for (const double component : k5ax_test::components(n->transform())) all.push_back(component);
  return all;
}

std::unique_ptr<md::CMachDef> clone_of(const md::CMachDef& machdef) {
  std::unique_ptr<md::CMachDef> made(new md::CMachDef);
  made->clone(machdef, 3);
  return made;
}

// Making an axis, for a clone too, normalises its direction, and what has been normalised may still move by
// its last bit. Only a machine whose directions do not move any more has a clone that equals it.
void settle_directions(md::CMachDef& machdef) {
  const auto normalised = [](const Point& direction) {
    return k5ax_test::rotary_axis(AXIS_A, TABLE, direction)->GetAxisVector();
  };
  for (const auto& axis : {machdef.getPrimary(), machdef.getSecondary()}) {
    for (int more = 0; more < 6; ++more) axis->SetAxisVector(normalised(axis->GetAxisVector()));
    RC_PRE(normalised(axis->GetAxisVector()) == axis->GetAxisVector());
  }
}

RC_GTEST_PROP(MachineLaws, ACloneAnswersAsItsOriginalToTheBit, ()) {
  const auto whole = *laws::whole_machine();
  md::CMachDef& original = whole->machdef();
  settle_directions(original);
  const auto clone = clone_of(original);
  RC_ASSERT(bytes_of(*clone) == bytes_of(original));
  const Point p = point(*laws::position(k5ax_test::kRandomSize));
  const Point abc = point(*laws::angles());
  RC_ASSERT(answers(*clone, p, abc) == answers(original, p, abc));
}

// Whatever is done to a clone, its original is saved as the same bytes as before; and the other way round.
RC_GTEST_PROP(MachineLaws, ACloneAndItsOriginalAreIndependent, ()) {
  const auto whole = *laws::whole_machine();
  const Point p = point(*laws::position(k5ax_test::kRandomSize));
  const Point abc = point(*laws::angles());
  md::CMachDef& original = whole->machdef();
  const auto clone = clone_of(original);

  const bool change_the_clone = *rc::gen::arbitrary<bool>();
  md::CMachDef& changed = change_the_clone ? *clone : original;
  md::CMachDef& left = change_the_clone ? original : *clone;
  const std::string before = bytes_of(left);
  switch (*rc::gen::inRange(0, 6)) {
    case 0:
      changed.orientate(abc.x, abc.y);
      break;
    case 1:
      changed.scale(!changed.isMetric());
      break;
    case 2:
      md::UpdateNodeAxes_(&changed, p, abc);
      break;
    case 3:
      for (const auto& root : changed.SG()) k5axSgNode_initialise(root.get(), 1);
      break;
    case 4:
      CMachDef_ToolNode_matrix_Set(&changed, p);
      break;
    default:
      changed.reset();
      break;
  }
  RC_ASSERT(bytes_of(left) == before);
}

RC_GTEST_PROP(MachineLaws, SavedLoadedAndSavedAgainIsTheSameBytes, ()) {
  const auto whole = *laws::whole_machine();
  const std::string bytes = bytes_of(whole->machdef());
  md::CMachDef loaded;
  read_bytes(loaded, bytes);
  RC_ASSERT(bytes_of(loaded) == bytes);
}

RC_GTEST_PROP(MachineLaws, ALoadedMachineAnswersAsTheOneThatWasSavedToTheBit, ()) {
  const auto whole = *laws::whole_machine();
  const Point p = point(*laws::position(k5ax_test::kRandomSize));
  const Point abc = point(*laws::angles());
  md::CMachDef loaded;
  read_bytes(loaded, bytes_of(whole->machdef()));
  RC_ASSERT(answers(loaded, p, abc) == answers(whole->machdef(), p, abc));
}

// The lengths of the machine that `scale` converts, and the ones of the trees that the remedy of
// docs/scene-graph.md does.
std::vector<double> lengths_of(const md::CMachDef& machdef) {
  std::vector<double> all;
  const auto add = [&all](const Point& q) { all.insert(all.end(), {q.x, q.y, q.z}); };
  for (const auto& axis : {machdef.getPrimary(), machdef.getSecondary()})
    if (axis) add(axis->GetBaseVector());
  for (const auto& axis : machdef.xyz_axes()) {
    add(axis->GetBaseVector());
    all.push_back(axis->GetMin());
    all.push_back(axis->GetMax());
  }
  add(machdef.head().tip);
  all.push_back(machdef.head().length1);
  return all;
}

RC_GTEST_PROP(MachineLaws, ToTheOtherUnitAndBackIsTheSameMachine, ()) {
  const auto whole = *laws::whole_machine();
  md::CMachDef& machdef = whole->machdef();
  const bool metric = machdef.isMetric();
  const std::vector<double> before = lengths_of(machdef);
  machdef.scale(!metric);
  RC_ASSERT(machdef.isMetric() != metric);
  machdef.scale(metric);
  RC_ASSERT(machdef.isMetric() == metric);

  const std::vector<double> after = lengths_of(machdef);
  RC_ASSERT(after.size() == before.size());
  for (std::size_t i = 0; i < before.size(); ++i) {
    RC_LOG() << "length " << i << ": " << before[i] << " became " << after[i] << '\n';
    // 1 / 25.4 and two products: each is half a unit of the last place at most, of a length up to twice as
    // far into its power of two.
    RC_ASSERT(std::abs(after[i] - before[i]) <= 3 * unit_of_last_place(std::abs(before[i])));
  }
}

bool is_rotary(const md::CMachDef& machdef, int id) {
  return machdef.SG_RotAxs()[0]->id() == id || machdef.SG_RotAxs()[1]->id() == id;
}

// With its trees put right as docs/scene-graph.md says, a machine in the other unit is posed with the same
// slides, in the other unit.
RC_GTEST_PROP(MachineLaws, TheUnitAndThePoseCommute, ()) {
  const auto whole = *laws::whole_machine();
  const auto machine = clone_of(whole->machdef());
  const auto other = clone_of(*machine);
  const bool metric = machine->isMetric();
  examples::change_units(*other, !metric);

  const double factor = metric ? 1 / 25.4 : 25.4;
  const Vec p = *laws::position(k5ax_test::kRandomSize);
  const Vec abc = *laws::angles();
  RC_ASSERT(md::UpdateNodeAxes_(machine.get(), point(p), point(abc)));
  RC_ASSERT(md::UpdateNodeAxes_(other.get(), point(p * factor), point(abc)));

  const auto states = md::CMachDef_IdAxisState_get(*machine);
  const auto other_states = md::CMachDef_IdAxisState_get(*other);
  RC_ASSERT(states.size() == 5u);
  RC_ASSERT(other_states.size() == 5u);
  double longest_slide = 0;
  for (const auto& entry : states)
    if (!is_rotary(*machine, entry.first))
      longest_slide = std::max(longest_slide, std::abs(entry.second.value));

  // The tool point is a sum of some fifteen vectors that are 1e4 long in all, carried through as many nodes
  // of ten roundings each. Where Z leans, by 54 degrees at most, its slope is taken between two points that
  // are 1 apart, each rounded like the tool point; so it is off by twice that, and by the length of the slide
  // as many times. X and Y make up for Z.
  const double carried = unit_of_last_place(1e4) * factor + unit_of_last_place(1e4 * factor);
  const double slope = 4 * (unit_of_last_place(1e4) + unit_of_last_place(1e4 * factor));
  for (const auto& entry : states) {
    const double value = entry.second.value;
    const double other_value = other_states.at(entry.first).value;
    RC_LOG() << "axis " << entry.first << ": " << value << " and " << other_value << '\n';
    if (is_rotary(*machine, entry.first))
      RC_ASSERT(other_value == value);
    else
      RC_ASSERT(std::abs(other_value - value * factor) <= 150 * carried + slope * longest_slide * factor);
  }
}

}  // namespace
