// A machine definition from its text: the machine, its axes and its head. The trees have a file of their own.
#include "tool/machine/machine_reader.h"

#include "tool/machine/axis_reader.h"
#include "tool/machine/derive_trees.h"
#include "tool/machine/head_reader.h"
#include "tool/machine/json_view.h"
#include "tool/machine/machine_words.h"
#include "tool/machine/trees_reader.h"

#include <utility>

namespace tool {
namespace {

void require_format(const JsonView& machine) {
  const std::optional<JsonView> format = machine.find("format");
  if (format && format->whole() != kTextFormat)
    format->fail_value("is not a format that this tool knows",
                       "it knows format " + std::to_string(kTextFormat) + "; take a newer tool");
}

ToolPlace read_tool_place(const JsonView& machine, const HeadRecord& head) {
  ToolPlace place;
  const std::optional<JsonView> tool = machine.find("tool");
  if (!tool) return place;
  tool->require_keys("the tool", kToolKeys);
  if (const auto mount = tool->find("mount")) place.mount = mount->point();
  const auto length = tool->find("length");
  const auto point = tool->find("point");
  if (length && point) length->fail("length and point both say where the tool point is", "keep one of them");
  if (length) place.tool_point = head.direction * length->number();
  if (point) place.tool_point = point->point();
  return place;
}

void read_or_derive_trees(const JsonView& machine, MachineRecord& record) {
  const std::optional<JsonView> trees = machine.find("trees");
  const std::optional<JsonView> tool = machine.find("tool");
  if (trees) {
    if (tool) tool->fail("the tool node in \"trees\" says where the tool is", "leave \"tool\" out");
    read_trees(*trees, record);
    return;
  }
  const DeriveObstacle obstacle = derive_obstacle(record);
  if (!obstacle.wrong.empty()) {
    JsonView at = *machine.find("type");
    if (obstacle.slot >= 0) at = *machine.find("axes")->find(word_for(kSlots, obstacle.slot));
    at.fail(obstacle.wrong, obstacle.remedy);
  }
  derive_trees(record, read_tool_place(machine, record.head));
}

}  // namespace

MachineRecord read_machine_text(std::string text, const std::string& file) {
  const JsonDocument document(std::move(text), file);
  const JsonView machine(document);
  machine.require_keys("a machine definition", kMachineKeys);
  if (const auto schema = machine.find("$schema")) schema->text();
  require_format(machine);

  MachineRecord record;
  record.is_metric = machine.require("units", "write \"units\": \"mm\" or \"inch\"").word(kUnits) == 1;
  record.type = machine.require("type", "write \"type\": " + choice(kTypes)).word_or_number(kTypes);
  if (const auto mode = machine.find("mode")) record.mode = mode->whole();
  if (const auto discipline = machine.find("discipline")) record.discipline = discipline->whole();
  record.head = straight_head();
  if (const auto head = machine.find("head")) record.head = read_head(*head, kHeadKeys);
  read_axes(machine.require("axes", "write \"axes\": {\"x\": {...}, ...}"), record);
  if (const auto zero = machine.find("work_zero")) record.work_zero = zero->point();
  if (const auto loading = machine.find("loading_vector")) record.loading_vector = loading->point();
  read_or_derive_trees(machine, record);
  return record;
}

}  // namespace tool
