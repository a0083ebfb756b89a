// Machines and paths that the tests of path and wrap write down for themselves.
#ifndef K5AX_TESTS_TOOL_PATH_PATH_MACHINES_H
#define K5AX_TESTS_TOOL_PATH_PATH_MACHINES_H

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <string>
#include <vector>

#include <k5ax/machdef.h>

#include "tool/process.h"

namespace tool_test {

/// Saves a machine without slides and trees, whose rotary axes run through the origin; null for none.
inline void save_machine(const std::string& path, MACHINE_TYPE type,
                         const boost::shared_ptr<md::CAxis2>& primary,
                         const boost::shared_ptr<md::CAxis2>& secondary) {
  md::CMachDef machine;
  machine.setMachType(type);
  machine.setPrimary(primary);
  machine.setSecondary(secondary);
  EXPECT_EQ(MachdefSave(&machine, path.c_str()), 1) << path;
}

/// A rotary axis about its letter's direction through the origin, 200 degrees either way.
inline boost::shared_ptr<md::CAxis2> through_origin(AXIS_TYPE letter, AXIS_LOCATION location) {
  const Geometry::TPoint<double> direction(letter == AXIS_A, letter == AXIS_B, letter == AXIS_C);
  return md::CAxis2::create(letter, location, {}, direction, -200 * math::D2R, 200 * math::D2R, ROTARY);
}

/// The rows of a table as numbers, without its header.
inline std::vector<std::vector<double>> numbers_of(const std::string& table) {
  std::vector<std::vector<double>> rows;
  const char* at = table.c_str() + table.find('\n') + 1;
  while (*at != '\0') {
    std::vector<double> row;
    for (;;) {
      char* after = nullptr;
      row.push_back(std::strtod(at, &after));
      if (after == at) {
        ADD_FAILURE() << "no number: " << std::string(at).substr(0, 40);
        return rows;
      }
      at = after + (*after != '\0' ? 1 : 0);
      if (*after != ',') break;
    }
    rows.push_back(row);
  }
  return rows;
}

}  // namespace tool_test

#endif
