// What a whole tool path came to, for people and for programs.
#include "tool/toolpath/path_summary.h"

#include "tool/errors.h"
#include "tool/text.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdio>
#include <ostream>
#include <string>
#include <vector>

namespace tool {
namespace {

const char* unit_of(const Travel& travel, const PathSummary& summary) {
  return travel.rotary ? "deg" : summary.unit;
}

// "A -131.2 deg (travel -120 to 30)"
std::string out_of_travel(const OutOfTravel& out, const PathSummary& summary) {
  if (out.axis == OutOfTravel::kNoAxis) return "the slides cannot bring the tool there";
  const Travel travel = summary.travels.all()[out.axis];
  return travel.axis + " " + number(out.value) + " " + unit_of(travel, summary) + " (travel " +
         number(travel.limit_min) + " to " + number(travel.limit_max) + ")";
}

// One line for each row that was kept, then how many more there are.
void print_rows_out(const PathSummary& summary, std::ostream& stream) {
  const std::string name = printable(summary.path);
  const std::vector<OutOfTravel>& kept = summary.travels.kept();
  for (std::size_t i = 0; i < kept.size(); ++i) {
    const bool same_row = i > 0 && kept[i - 1].line == kept[i].line;
    if (same_row) {
      stream << ", ";
    } else {
      stream << (i > 0 ? "\n" : "") << name << ":" << kept[i].line << ": out of travel: ";
    }
    stream << out_of_travel(kept[i], summary);
  }
  if (!kept.empty()) stream << "\n";
  if (summary.travels.rows_out() > Travels::kRowsKept)
    stream << name << ": and " << summary.travels.rows_out() - Travels::kRowsKept
           << " more rows out of travel\n";
}

void print_axes(const PathSummary& summary, std::ostream& stream) {
  if (summary.travels.all().empty()) return;
  const bool any_row = summary.travels.rows() > summary.travels.rows_unreached();
  char text[200];
  std::snprintf(text, sizeof text, "%-8s %12s %12s %12s %12s %10s\n", "axis", "from", "to", "travel from",
                "to", "rows out");
  stream << text;
  for (const Travel& travel : summary.travels.all()) {
    std::snprintf(text, sizeof text, "%-1s %-6s %12s %12s %12s %12s %10llu\n", travel.axis.c_str(),
                  unit_of(travel, summary), any_row ? number(travel.used_min, 8).c_str() : "-",
                  any_row ? number(travel.used_max, 8).c_str() : "-", number(travel.limit_min, 8).c_str(),
                  number(travel.limit_max, 8).c_str(), static_cast<unsigned long long>(travel.rows_out));
    stream << text;
  }
}

// In JSON a name says when a number is in degrees.
std::string key(const std::string& name, const Travel& travel) {
  return travel.rotary ? name + "_deg" : name;
}

}  // namespace

void print_summary(const PathSummary& summary, std::ostream& stream) {
  print_rows_out(summary, stream);
  stream << printable(summary.path) << ": " << counted(summary.rows, "row");
  if (summary.checked) stream << ", " << summary.travels.rows_out() << " out of travel";
  stream << "\n";
  if (!summary.checked) return;
  print_axes(summary, stream);
  if (!summary.has_slides)
    stream << "X, Y, Z: not looked at, since no tree of the machine says where its slides stand\n";
}

void print_summary_json(const PathSummary& summary, std::ostream& stream) {
  using Json = nlohmann::ordered_json;
  const bool any_row = summary.travels.rows() > summary.travels.rows_unreached();
  Json json;
  json["path"] = summary.path;
  json["rows"] = summary.rows;
  json["unit"] = summary.unit;
  json["travels_checked"] = summary.checked;
  if (summary.checked) {
    json["slides_checked"] = summary.has_slides;
    json["rows_out"] = summary.travels.rows_out();
    json["rows_not_reached"] = summary.travels.rows_unreached();
    json["axes"] = Json::array();
    const std::vector<Travel> travels = summary.travels.all();
    for (const Travel& travel : travels) {
      Json axis;
      axis["axis"] = travel.axis;
      axis[key("from", travel)] = any_row ? Json(travel.used_min) : Json();
      axis[key("to", travel)] = any_row ? Json(travel.used_max) : Json();
      axis[key("travel", travel)] = {travel.limit_min, travel.limit_max};
      axis["rows_out"] = travel.rows_out;
      axis["first_line_out"] = travel.rows_out > 0 ? Json(travel.first_line_out) : Json();
      json["axes"].push_back(axis);
    }
    json["first_rows_out"] = Json::array();
    for (const OutOfTravel& out : summary.travels.kept()) {
      Json row;
      row["line"] = out.line;
      if (out.axis == OutOfTravel::kNoAxis) {
        row["axis"] = nullptr;
      } else {
        const Travel& travel = travels[out.axis];
        row["axis"] = travel.axis;
        row[key("value", travel)] = out.value;
      }
      json["first_rows_out"].push_back(row);
    }
  }
  // A file's name may be anything; what is no UTF-8 is shown as the replacement character.
  stream << json.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
}

}  // namespace tool
