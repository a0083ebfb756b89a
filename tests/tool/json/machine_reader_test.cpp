// Machines from text: what is left out, and what is wrong.
#include "tool/machine/machine_reader.h"

#include "tool/errors.h"
#include "tool/machine/machine_record.h"

#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "support/near.h"

namespace {

using k5ax_test::deg;
using tool::MachineRecord;
using tool::Point;

// A whole machine on one line each for what the tests change.
const char* const kMachine = R"({
  "units": "mm",
  "type": "table-table",
  "axes": {
    "x": {"location": "table", "limits": [-300, 300]},
    "y": {"location": "head", "limits": [-250, 250]},
    "z": {"location": "head", "limits": [-450, 0]},
    "primary": {"letter": "A", "point": [0, 0, 50], "limits": [-120, 30]},
    "secondary": {"letter": "C", "point": [0, 0, 0], "limits": [-3600, 3600]}
  },
  "tool": {"mount": [0, 0, 500], "length": 150}
})";

std::string changed(const std::string& from, const std::string& to) {
  std::string text = kMachine;
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

MachineRecord read(const std::string& text) { return tool::read_machine_text(text, "m.json"); }

std::string complaint(const std::string& text) {
  try {
    read(text);
    return "none";
  } catch (const tool::InputError& error) {
    return error.what();
  }
}

std::string complaint(const std::string& from, const std::string& to) { return complaint(changed(from, to)); }

const tool::AxisRecord& axis(const MachineRecord& machine, int slot) {
  return machine.axes[static_cast<std::size_t>(slot)].value();
}

// ---- what is left out ----

TEST(MachineReader, TakesTheLetterOfThePlace) {
  const MachineRecord machine = read(kMachine);
  EXPECT_EQ(axis(machine, tool::kX).letter, AXIS_X);
  EXPECT_EQ(axis(machine, tool::kY).letter, AXIS_Y);
  EXPECT_EQ(axis(machine, tool::kZ).letter, AXIS_Z);
}

TEST(MachineReader, TakesMotionAndDirectionOfTheLetter) {
  const MachineRecord machine = read(kMachine);
  EXPECT_EQ(axis(machine, tool::kY).motion, LINEAR);
  EXPECT_EQ(axis(machine, tool::kPrimary).motion, ROTARY);
  EXPECT_EQ(axis(machine, tool::kY).direction, Point(0, 1, 0));
  EXPECT_EQ(axis(machine, tool::kPrimary).direction, Point(1, 0, 0));
}

TEST(MachineReader, PutsRotaryAxesWhereTheTypeHasThem) {
  const MachineRecord tt = read(kMachine);
  EXPECT_EQ(axis(tt, tool::kPrimary).location, TABLE);
  EXPECT_EQ(axis(tt, tool::kSecondary).location, TABLE);
  const MachineRecord ht = read(changed("table-table", "head-table"));
  EXPECT_EQ(axis(ht, tool::kPrimary).location, TABLE);
  EXPECT_EQ(axis(ht, tool::kSecondary).location, HEAD);
  const MachineRecord hh = read(changed("table-table", "head-head"));
  EXPECT_EQ(axis(hh, tool::kPrimary).location, HEAD);
  EXPECT_EQ(axis(hh, tool::kSecondary).location, HEAD);
}

TEST(MachineReader, StartsFromAFreshMachine) {
  const MachineRecord machine = read(kMachine);
  EXPECT_EQ(machine.mode, -1);
  EXPECT_EQ(machine.discipline, 0);
  EXPECT_EQ(machine.work_zero, Point());
  EXPECT_TRUE(tool::same_bits(machine.head, tool::straight_head()));
}

TEST(MachineReader, MakesAFreshMachineOfTheLeastText) {
  md::CMachDef fresh;
  EXPECT_EQ(tool::bytes_of(read("{\"units\": \"mm\", \"type\": -1, \"axes\": {}, \"trees\": {}}")),
            tool::bytes_of(tool::record_of(fresh)));
}

TEST(MachineReader, TakesNullForAMissingAxis) {
  EXPECT_FALSE(read(changed("{\"location\": \"table\", \"limits\": [-300, 300]}", "null")).axes[tool::kX]);
}

TEST(MachineReader, TakesComments) {
  EXPECT_EQ(complaint("\"units\"", "// one\n /* two\n */ \"units\" /**/"), "none");
}

// ---- values ----

TEST(MachineReader, ReadsLimitsOfRotaryAxesInDegreesAndOthersAsLengths) {
  const MachineRecord machine = read(kMachine);
  EXPECT_EQ(axis(machine, tool::kPrimary).min, deg(-120));
  EXPECT_EQ(axis(machine, tool::kX).min, -300);
}

TEST(MachineReader, ReadsRadiansWhereverAnAngleStands) {
  const MachineRecord machine = read(changed("[-120, 30]", "[{\"rad\": -1.25}, 30]"));
  EXPECT_EQ(axis(machine, tool::kPrimary).min, -1.25);
  EXPECT_EQ(axis(machine, tool::kPrimary).max, deg(30));
  EXPECT_EQ(read(changed("\"axes\"", "\"head\": {\"tilt\": {\"rad\": 0.3}}, \"axes\"")).head.tilt, 0.3);
}

// (0, -3, 4) has length 5.
TEST(MachineReader, BringsADirectionAlongToLengthOne) {
  const MachineRecord machine =
      read(changed("\"point\": [0, 0, 50]", "\"point\": [0, 0, 50], \"direction\": {\"along\": [0, -3, 4]}"));
  EXPECT_EQ(axis(machine, tool::kPrimary).direction, Point(0, -0.6, 0.8));
}

TEST(MachineReader, LeavesADirectionAsItStands) {
  const MachineRecord machine =
      read(changed("\"point\": [0, 0, 50]", "\"point\": [0, 0, 50], \"direction\": [0, -3, 4]"));
  EXPECT_EQ(axis(machine, tool::kPrimary).direction, Point(0, -3, 4));
}

TEST(MachineReader, ComputesAHeadAsTheLibraryDoes) {
  const MachineRecord machine = read(changed(
      "\"axes\"",
      "\"head\": {\"tilt\": 30, \"turn\": -75, \"lengths\": [4, 3], \"side_offset\": 0.5}, \"axes\""));
  angled_head expected;
  k5ax_angled_head_initialise(&expected);
  const double lengths[2] = {4, 3};
  k5ax_angled_head_set(-75, 30, lengths, 0.5, &expected);
  EXPECT_EQ(machine.head.tilt, expected.b_angle);
  EXPECT_EQ(machine.head.turn, expected.c_angle);
  EXPECT_EQ(machine.head.tip, expected.tip);
  EXPECT_EQ(machine.head.direction, expected.tool_dir);
  EXPECT_EQ(machine.head.reference, expected.ref_dir);
}

// About Z a quarter turn takes X to Y, Y to -X; 6.1e-17 is the cosine of the double nearest to pi / 2.
TEST(MachineReader, ReadsARotationByAxisAndAngle) {
  const MachineRecord machine = read(changed(
      "\"tool\": {\"mount\": [0, 0, 500], \"length\": 150}",
      R"("trees": {"tool": {"kind": "plain", "id": 1, "rotation": {"axis": [0, 0, 2], "angle": 90}}})"));
  ASSERT_EQ(machine.nodes.size(), 1U);
  const tool::Transform expected = {0, 1, 0, -1, 0, 0, 0, 0, 1, 0, 0, 0};
  EXPECT_NEAR_ARRAY(machine.nodes[0].transform.data(), expected.data(), 12, 1e-16);
}

TEST(MachineReader, ReadsNestedNodesBeforeTheirSiblings) {
  const MachineRecord machine = read(changed("\"tool\": {\"mount\": [0, 0, 500], \"length\": 150}",
                                             R"("trees": {"part": {"kind": "plain", "id": 1, "children": [
           {"kind": "plain", "id": 2, "children": [{"kind": "plain", "id": 3}]},
           {"kind": "axis", "id": 4, "axis": "x"}]}})"));
  ASSERT_EQ(machine.nodes.size(), 4U);
  const int ids[] = {1, 2, 3, 4};
  const int parents[] = {-1, 0, 1, 0};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(machine.nodes[i].id, ids[i]);
    EXPECT_EQ(machine.nodes[i].parent, parents[i]);
  }
  EXPECT_EQ(machine.roots[0], -1);
  EXPECT_EQ(machine.roots[1], 0);
}

// ---- what is wrong, and where: lines and columns are counted in the text above ----

TEST(MachineReader, NamesTheKnownKeyNearestToAnUnknownOne) {
  EXPECT_EQ(complaint("\"units\"", "\"unit\""),
            "m.json:2:11: /unit: unknown key in a machine definition; did you mean \"units\"?");
  EXPECT_EQ(complaint("\"limits\": [-450", "\"limit\": [-450"),
            "m.json:7:40: /axes/z/limit: unknown key in an axis; did you mean \"limits\"?");
  EXPECT_EQ(complaint("\"mount\"", "\"moutn\""),
            "m.json:11:21: /tool/moutn: unknown key in the tool; did you mean \"mount\"?");
}

TEST(MachineReader, ListsTheKnownKeysWhereNoneIsNear) {
  EXPECT_EQ(complaint("\"mount\"", "\"colour\""),
            "m.json:11:22: /tool/colour: unknown key in the tool; known here: mount, length, point");
}

TEST(MachineReader, NamesAMissingKeyAndWhatToWrite) {
  EXPECT_EQ(complaint("\"units\": \"mm\",", ""),
            "m.json:1:1: \"units\" is missing; write \"units\": \"mm\" or \"inch\"");
  EXPECT_EQ(complaint("\"letter\": \"A\", ", ""),
            "m.json:8:16: /axes/primary: \"letter\" is missing; write \"letter\": \"A\", \"B\", \"C\", "
            "\"X\", \"Y\" or \"Z\"");
  EXPECT_EQ(complaint("\"location\": \"table\", ", ""),
            "m.json:5:10: /axes/x: \"location\" is missing; write \"location\": \"head\" or \"table\"");
  EXPECT_EQ(
      complaint(", \"limits\": [-120, 30]", ""),
      "m.json:8:16: /axes/primary: \"limits\" is missing; write \"limits\": [lower, upper], in degrees");
  EXPECT_EQ(
      complaint(", \"limits\": [-300, 300]", ""),
      "m.json:5:10: /axes/x: \"limits\" is missing; write \"limits\": [lower, upper], in the machine's unit");
  EXPECT_EQ(
      complaint("\"point\": [0, 0, 50], ", ""),
      "m.json:8:16: /axes/primary: \"point\" is missing; write \"point\": [x, y, z], a point on the axis");
}

struct Wrong {
  const char* from;
  const char* to;
  const char* said;
};

TEST(MachineReader, NamesPlaceValueAndRemedyOfAWrongValue) {
  const Wrong wrongs[] = {
      {"\"mm\"", "\"cm\"", "m.json:2:12: /units: \"cm\" is not known; did you mean \"mm\"?"},
      {"\"mm\"", "3", "m.json:2:12: /units: 3 is not a word; write \"mm\" or \"inch\""},
      {"\"table-table\"", "\"table table\"",
       "m.json:3:11: /type: \"table table\" is not known; did you mean \"table-table\"?"},
      {"\"table-table\"", "4000000000",
       "m.json:3:11: /type: 4000000000 is not a whole number that fits; write one from -2147483648 to "
       "2147483647"},
      {"\"table-table\"", "null",
       "m.json:3:11: /type: null is not a word; write \"table-table\", \"head-table\" or \"head-head\""},
      {"\"location\": \"table\"", "\"location\": \"tabel\"",
       "m.json:5:23: /axes/x/location: \"tabel\" is not known; did you mean \"table\"?"},
      {"[-300, 300]", "[-300]",
       "m.json:5:42: /axes/x/limits: a list of 1 is not a pair of limits; write \"limits\": [lower, upper], "
       "in the "
       "machine's unit"},
      {"[-300, 300]", "[-300, \"300\"]",
       "m.json:5:49: /axes/x/limits/1: \"300\" is not a number; write a number, without quotes"},
      {"[-300, 300]", "[-300, {\"rad\": 1}]",
       "m.json:5:49: /axes/x/limits/1: an object is not a number; write a number, without quotes"},
      {"[-120, 30]", "[\"a\", 30]",
       "m.json:8:64: /axes/primary/limits/0: \"a\" is not an angle; write degrees as a number, or {\"rad\": "
       "number}"},
      {"[-120, 30]", "[{\"deg\": 3}, 30]",
       "m.json:8:72: /axes/primary/limits/0/deg: unknown key in an angle; known here: rad"},
      {"[0, 0, 50]", "[0, 50]",
       "m.json:8:41: /axes/primary/point: a list of 2 is not a point; write three numbers, [x, y, z]"},
      {"[0, 0, 50]", "[0, true, 50]",
       "m.json:8:45: /axes/primary/point/1: true is not a number; write a number, without quotes"},
      {"{\"mount\": [0, 0, 500], \"length\": 150}", "[]",
       "m.json:11:11: /tool: an empty list is not the tool; write an object, {...}"},
      {"\"length\": 150", "\"length\": 150, \"point\": [0, 0, 1]",
       "m.json:11:44: /tool/length: length and point both say where the tool point is; keep one of them"},
      {"\"tool\": {", "\"trees\": {}, \"tool\": {",
       "m.json:11:24: /tool: the tool node in \"trees\" says where the tool is; leave \"tool\" out"},
      {"\"units\"", "\"format\": 2, \"units\"",
       "m.json:2:13: /format: 2 is not a format that this tool knows; it knows format 1; take a newer tool"},
      {"\"table-table\"", "7",
       "m.json:8:16: /axes/primary: \"location\" is missing; write \"location\": \"head\" or \"table\""},
      {"\"letter\": \"A\", ", "\"letter\": \"A\", \"location\": \"head\", ",
       "m.json:8:16: /axes/primary: on the head, where a table-table machine has none; put it on the table, "
       "or change "
       "\"type\""},
      {"\"letter\": \"A\", ", "\"letter\": \"A\", \"motion\": \"linear\", ",
       "m.json:8:16: /axes/primary: does not turn; give the motion that goes with the place, or write "
       "\"trees\""},
      {"\"point\": [0, 0, 50]", "\"point\": [0, 0, 50], \"direction\": {\"along\": [0, 0, 0]}",
       "m.json:8:76: /axes/primary/direction/along: a list of 3 is too short or too long to point somewhere; "
       "give "
       "numbers around 1"},
      {"\"axes\"", "\"head\": {\"flags\": -1}, \"axes\"",
       "m.json:4:21: /head/flags: -1 is not a flags word; write a whole number from 0 to 4294967295"},
      {"\"axes\"", "\"head\": {\"lengths\": 3}, \"axes\"",
       "m.json:4:23: /head/lengths: 3 is not the head's two lengths; write two numbers: mounting point to "
       "tilt joint, "
       "tilt joint to tool reference point"},
  };
  int checked = 0;
  for (const Wrong& wrong : wrongs) {
    EXPECT_EQ(complaint(wrong.from, wrong.to), wrong.said);
    ++checked;
  }
  EXPECT_EQ(checked, 23);
}

TEST(MachineReader, WantsAnObject) {
  EXPECT_EQ(complaint("[]"), "m.json:1:1: an empty list is not a machine definition; write an object, {...}");
  EXPECT_EQ(complaint("3"), "m.json:1:1: 3 is not a machine definition; write an object, {...}");
}

TEST(MachineReader, DerivesNoTreesForAnUnknownType) {
  EXPECT_EQ(complaint("{\"units\": \"mm\", \"type\": 3, \"axes\": {}}"),
            "m.json:1:25: /type: trees can be left out for the three types only; write \"trees\", {} for "
            "none, or one "
            "of the types \"table-table\", \"head-table\" or \"head-head\"");
}

// ---- nodes ----

std::string node_complaint(const std::string& trees) {
  return complaint("{\"units\": \"mm\", \"type\": -1, \"axes\": {},\n\"trees\": " + trees + "}");
}

TEST(MachineReader, NamesWhatIsWrongWithANode) {
  const Wrong wrongs[] = {
      {"", "{\"tool\": {\"id\": 1}}",
       "m.json:2:19: /trees/tool: \"kind\" is missing; write \"kind\": \"plain\", \"axis\" or \"tool\""},
      {"", "{\"tool\": {\"kind\": \"plain\"}}",
       "m.json:2:19: /trees/tool: \"id\" is missing; write \"id\": a whole number; -999 for a fixed offset"},
      {"", "{\"tool\": {\"kind\": \"axes\", \"id\": 1}}",
       "m.json:2:28: /trees/tool/kind: \"axes\" is not known; did you mean \"axis\"?"},
      {"", "{\"tool\": {\"kind\": \"plain\", \"id\": 1, \"axis\": \"x\"}}",
       "m.json:2:54: /trees/tool/axis: unknown key in a node of kind \"plain\"; known here: kind, id, "
       "parent, flags, "
       "value, translation, rotation, children"},
      {"", "{\"tool\": {\"kind\": \"plain\", \"id\": 1, \"child\": []}}",
       "m.json:2:55: /trees/tool/child: unknown key in a node; known here: kind, id, parent, flags, value, "
       "translation, rotation, children, axis, tool_point, head"},
      {"", "{\"tool\": {\"kind\": \"axis\", \"id\": 1, \"axis\": \"x\"}}",
       "m.json:2:53: /trees/tool/axis: \"x\" is an axis that the machine does not have; add it to \"axes\""},
      {"", "{\"tool\": {\"kind\": \"tool\", \"id\": 1}}",
       "m.json:2:19: /trees/tool: \"tool_point\" is missing; write \"tool_point\": [x, y, z], from the tool "
       "point to "
       "the tool reference point"},
      {"", "{\"tool\": {\"kind\": \"plain\", \"id\": 1, \"children\": {}}}",
       "m.json:2:58: /trees/tool/children: an empty object is not a list of nodes; write [{...}, ...]"},
      {"", "{\"tool\": {\"kind\": \"plain\", \"id\": 1, \"parent\": 0}}",
       "m.json:2:56: /trees/tool/parent: a nested node hangs below the node around it; leave \"parent\" out"},
      {"", "{\"nodes\": [{\"kind\": \"plain\", \"id\": 1}]}",
       "m.json:2:21: /trees/nodes/0: \"parent\" is missing; write \"parent\": the place of a node in this "
       "list, from 0, "
       "or -1"},
      {"",
       "{\"nodes\": [{\"kind\": \"plain\", \"id\": 1, \"parent\": 1}, {\"kind\": \"plain\", \"id\": 2, "
       "\"parent\": 0}]}",
       "m.json:2:58: /trees/nodes/0/parent: 1 makes the node its own ancestor; give the node another parent"},
      {"", "{\"nodes\": [], \"tool\": {\"kind\": \"plain\", \"id\": 1}}",
       "m.json:2:32: /trees/tool: the nodes stand in \"nodes\"; keep one of the two"},
      {"", "{\"tool_root\": 0}",
       "m.json:2:24: /trees/tool_root: a root goes with \"nodes\" only; leave it out; the root is what "
       "\"tool\" and "
       "\"part\" begin with"},
      {"", "{\"tool\": {\"kind\": \"plain\", \"id\": 1, \"rotation\": {\"axis\": [0, 0, 0], \"angle\": 3}}}",
       "m.json:2:67: /trees/tool/rotation/axis: a list of 3 has no direction; give numbers around 1"},
      {"", "{\"tool\": {\"kind\": \"plain\", \"id\": 1, \"rotation\": {}}}",
       "m.json:2:58: /trees/tool/rotation: an empty object is not one rotation; write {\"axis\": [x, y, z], "
       "\"angle\": "
       "degrees}, or {\"matrix\": [[...], [...], [...]]}, three rows of three"},
  };
  int checked = 0;
  for (const Wrong& wrong : wrongs) {
    EXPECT_EQ(node_complaint(wrong.to), wrong.said);
    ++checked;
  }
  EXPECT_EQ(checked, 15);
}

TEST(MachineReader, StaysShortInADeepPlace) {
  std::string trees;
  for (int i = 0; i < 100000; ++i) trees += "{\"kind\": \"plain\", \"id\": 1, \"children\": [";
  const std::string said = node_complaint("{\"tool\": " + trees + "3" + [] {
    std::string closing;
    for (int i = 0; i < 100000; ++i) closing += "]}";
    return closing;
  }() + "}");
  EXPECT_NE(said.find("/children/0/children/0: 3 is not a node; "), std::string::npos) << said;
  EXPECT_LT(said.size(), 400U);
}

}  // namespace
