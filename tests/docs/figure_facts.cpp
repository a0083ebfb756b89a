// Answers the questions that the pictures of the guide answer for themselves: one question a line on standard
// input, its answer as numbers on standard output. Angles are degrees here, as the pictures say them.
#include <k5ax/k5ax.h>

#include <cstdio>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

using Point = Geometry::TPoint<double>;

double read_number(std::istream& given) {
  double value;
  if (!(given >> value)) throw std::runtime_error("a number is missing");
  return value;
}

Point read_point(std::istream& given) {
  const double x = read_number(given);
  const double y = read_number(given);
  return Point(x, y, read_number(given));
}

void answer(double value) { std::printf(" %.17g", value); }

void answer(const Point& p) {
  answer(p.x);
  answer(p.y);
  answer(p.z);
}

// A machine of two rotary axes, and the angles at which the picture has them.
struct Posed {
  md::CMachDef machine;
  Point abc;
};

boost::shared_ptr<md::CAxis2> read_axis(std::istream& given, Point& abc) {
  std::string letter;
  std::string location;
  given >> letter >> location;
  const Point base = read_point(given);
  const Point vector = read_point(given);
  const AXIS_TYPE type = letter == "A" ? AXIS_A : letter == "B" ? AXIS_B : AXIS_C;
  const auto axis = md::CAxis2::create(type, location == "head" ? HEAD : TABLE, base, vector, -math::m_2pi,
                                       math::m_2pi, ROTARY);
  axis->SetValue(read_number(given) * math::D2R, abc.x, abc.y, abc.z);
  return axis;
}

void read_posed(std::istream& given, Posed& posed) {
  std::string type;
  given >> type;
  posed.machine.setMachType(type == "table-table" ? MC_TT : type == "head-table" ? MC_HT : MC_HH);
  posed.machine.setPrimary(read_axis(given, posed.abc));
  posed.machine.setSecondary(read_axis(given, posed.abc));
  if (!posed.machine.is_valid()) throw std::runtime_error("the machine of the picture is not valid");
}

void rotate(std::istream& given) {
  const Point direction = read_point(given);
  const double radians = read_number(given) * math::D2R;
  answer(read_point(given) * Geometry::RotateAboutAxis(direction, radians));
}

void part_to_machine(std::istream& given) {
  Posed posed;
  read_posed(given, posed);
  answer(posed.machine.Part2MachCoords(read_point(given), posed.abc));
}

// Where two axes of the table are away from zero, the direction goes as a point does; docs/conventions.md.
void tool_on_part(std::istream& given) {
  Posed posed;
  read_posed(given, posed);
  if (posed.machine.getMachType() == MC_TT) {
    Geometry::Matrix primary;
    Geometry::Matrix secondary;
    posed.machine.Mach2PartTransform(Point(), posed.abc, primary, secondary);
    answer((primary * secondary).TransformDirection(posed.machine.getToolDir()));
    return;
  }
  Point p_part;
  Point d_tool_part;
  posed.machine.Mach2PartCoords(Point(), posed.abc, p_part, d_tool_part);
  answer(d_tool_part);
}

void head(std::istream& given) {
  const double turn = read_number(given);
  const double tilt = read_number(given);
  const double first = read_number(given);
  const double lengths[] = {first, read_number(given)};
  angled_head head;
  k5ax_angled_head_initialise(&head);
  k5ax_angled_head_set(turn, tilt, lengths, 0, &head);
  answer(head.tip);
  answer(head.tool_dir);
  answer(head.ref_dir);
}

// About a C of the table, into the half-plane of +X.
void wrap(std::istream& given) {
  md::CMachDef machine;
  machine.setMachType(MC_HT);
  machine.setPrimary(
      md::CAxis2::create(AXIS_C, TABLE, Point(), Point(0, 0, 1), -math::m_2pi, math::m_2pi, ROTARY));
  Point p_wrapped;
  Point abc;
  double radius = 0;
  md::Cartesian2AxialRotaryVals(&machine, read_point(given), Point(), 0, 1, p_wrapped, abc, radius);
  answer(p_wrapped);
  answer(abc.z * math::R2D);
  answer(radius);
}

// Of every node: its kind as in a file, its id, the place of its parent, and its translation.
void tree(std::istream& given) {
  std::string name;
  given >> name;
  md::CMachDef machine;
  if (MachdefLoad(&machine, (K5AX_EXAMPLE_MACHINES "/" + name + ".k5m").c_str()) == 0)
    throw std::runtime_error(name + ": no such machine");
  std::map<const md::sg::node*, int> places;
  for (const auto& root : machine.SG()) {
    for (const auto& node : md::sg::node::all_nodes(root)) {
      places.emplace(node.get(), static_cast<int>(places.size()));
      answer(md::sg::axis_node(node.get()) != nullptr ? 1 : md::sg::tool_node(node.get()) != nullptr ? 2 : 0);
      answer(node->id());
      answer(node->parent_ptr() != nullptr ? places.at(node->parent_ptr()) : -1);
      answer(Point() * node->transform());
    }
  }
}

}  // namespace

int main() {
  const std::map<std::string, void (*)(std::istream&)> answers = {{"rotate", rotate},
                                                                  {"part_to_machine", part_to_machine},
                                                                  {"tool_on_part", tool_on_part},
                                                                  {"head", head},
                                                                  {"wrap", wrap},
                                                                  {"tree", tree}};
  for (std::string line; std::getline(std::cin, line);) {
    std::istringstream given(line);
    std::string question;
    given >> question;
    try {
      answers.at(question)(given);
    } catch (const std::exception& error) {
      std::fprintf(stderr, "%s: %s\n", line.c_str(), error.what());
      return 1;
    }
    std::printf("\n");
  }
  return 0;
}
