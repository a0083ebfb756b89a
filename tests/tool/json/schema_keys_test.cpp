// The schema, the reader and the docs name the same keys.
#include "tool/machine/machine_words.h"

#include <set>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tool/process.h"

namespace {

using tool_test::in_tree;
using tool_test::read_file;

const nlohmann::json& schema() {
  static const nlohmann::json document =
      nlohmann::json::parse(read_file(in_tree("tool/machine/machine.schema.json")));
  return document;
}

std::set<std::string> keys_at(const std::string& pointer) {
  std::set<std::string> keys;
  for (const auto& entry : schema().at(nlohmann::json::json_pointer(pointer + "/properties")).items())
    keys.insert(entry.key());
  return keys;
}

std::set<std::string> set_of(const tool::Keys& keys) { return {keys.begin(), keys.end()}; }

std::set<std::string> words_at(const std::string& pointer) {
  return schema().at(nlohmann::json::json_pointer(pointer)).get<std::set<std::string>>();
}

std::set<std::string> set_of(const std::vector<tool::Word>& words) {
  std::set<std::string> set;
  for (const tool::Word& word : words) set.emplace(word.text);
  return set;
}

TEST(Schema, HasTheKeysOfTheReader) {
  EXPECT_EQ(keys_at(""), set_of(tool::kMachineKeys));
  EXPECT_EQ(keys_at("/properties/axes"), set_of(tool::kAxesKeys));
  EXPECT_EQ(keys_at("/properties/tool"), set_of(tool::kToolKeys));
  EXPECT_EQ(keys_at("/definitions/axis"), set_of(tool::kAxisKeys));
  EXPECT_EQ(keys_at("/definitions/head"), set_of(tool::kHeadKeys));
  EXPECT_EQ(keys_at("/definitions/trees"), set_of(tool::kTreesKeys));
  EXPECT_EQ(keys_at("/definitions/plainNode"), set_of(tool::kPlainNodeKeys));
  EXPECT_EQ(keys_at("/definitions/axisNode"), set_of(tool::kAxisNodeKeys));
  EXPECT_EQ(keys_at("/definitions/toolNode"), set_of(tool::kToolNodeKeys));
}

TEST(Schema, HasTheWordsOfTheReader) {
  EXPECT_EQ(words_at("/properties/units/enum"), set_of(tool::kUnits));
  EXPECT_EQ(words_at("/properties/type/anyOf/0/enum"), set_of(tool::kTypes));
  EXPECT_EQ(words_at("/definitions/axis/properties/letter/anyOf/0/enum"), set_of(tool::kLetters));
  EXPECT_EQ(words_at("/definitions/axis/properties/location/anyOf/0/enum"), set_of(tool::kLocations));
  EXPECT_EQ(words_at("/definitions/axis/properties/motion/anyOf/0/enum"), set_of(tool::kMotions));
  EXPECT_EQ(words_at("/definitions/carriedAxis/anyOf/0/enum"), set_of(tool::kSlots));
}

TEST(MachineJsonPage, NamesEveryKey) {
  const std::string page = read_file(in_tree("docs/machine-json.md"));
  int named = 0;
  for (const tool::Keys* keys :
       {&tool::kMachineKeys, &tool::kAxesKeys, &tool::kAxisKeys, &tool::kHeadKeys, &tool::kToolKeys,
        &tool::kTreesKeys, &tool::kPlainNodeKeys, &tool::kAxisNodeKeys, &tool::kToolNodeKeys}) {
    for (const std::string_view key : *keys) {
      EXPECT_NE(page.find('`' + std::string(key) + '`'), std::string::npos) << key;
      ++named;
    }
  }
  EXPECT_GT(named, 50);
}

TEST(MachineJsonPage, ShowsTheShippedMachine) {
  const std::string page = read_file(in_tree("docs/machine-json.md"));
  const std::size_t from = page.find("```jsonc\n") + 9;
  const std::string sample = page.substr(from, page.find("```", from) - from);
  const std::string shipped = read_file(in_tree("examples/machines/table_table_trunnion.json"));
  EXPECT_EQ(shipped.substr(shipped.find("{\n")), sample);
}

}  // namespace
