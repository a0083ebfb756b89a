// Saving and loading while the system fails: every system call of each, one after the other, with every
// failure that the call can have.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <iostream>
#include <ostream>

#include <gtest/gtest.h>

#include <k5ax/kinematics.h>

#include "faults/faulty_calls.h"
#include "machdef/files/memory_stream.h"
#include "machdef/files/rich_machine.h"
#include "platform/scratch.h"
#include "platform/scratch_process.h"

using namespace k5ax_test;
using md::CMachDef;

namespace {

// What has to come of a save or a load in which one call went wrong.
enum class Outcome { fails, succeeds, either };

struct Case {
  Fault fault;
  Outcome outcome;
  const char* name;
};

constexpr Case error(int code, const char* name, Outcome outcome = Outcome::fails) {
  return {{Fault::kError, code, false}, outcome, name};
}
constexpr Case lasting(int code, const char* name, Outcome outcome = Outcome::fails) {
  return {{Fault::kError, code, true}, outcome, name};
}
constexpr Case kInterruption = {{Fault::kInterrupted, EINTR, false}, Outcome::succeeds, "interrupted"};

std::vector<Case> cases_of(Call call) {
  switch (call) {
    case Call::open_reading:
    case Call::open_folder:
      return {error(EACCES, "EACCES"), error(EMFILE, "EMFILE"), error(ENOMEM, "ENOMEM"), kInterruption};
    case Call::create:
      return {error(EACCES, "EACCES"), error(ENOSPC, "ENOSPC"), error(EROFS, "EROFS"),
              error(EDQUOT, "EDQUOT"),
              // A name that is taken: another one is tried, but not for ever.
              error(EEXIST, "EEXIST", Outcome::succeeds), lasting(EEXIST, "EEXIST for ever"), kInterruption};
    case Call::read:
      return {error(EIO, "EIO"),
              lasting(EIO, "EIO for ever"),
              kInterruption,
              {{Fault::kOneByte, 0, false}, Outcome::succeeds, "one byte"},
              {{Fault::kOneByte, 0, true}, Outcome::succeeds, "one byte each"},
              {{Fault::kNothing, 0, true}, Outcome::fails, "the end"}};
    case Call::write:
      return {error(EIO, "EIO"),
              error(ENOSPC, "ENOSPC"),
              lasting(ENOSPC, "ENOSPC for ever"),
              error(EDQUOT, "EDQUOT"),
              error(EFBIG, "EFBIG"),
              kInterruption,
              {{Fault::kOneByte, 0, false}, Outcome::succeeds, "one byte"},
              {{Fault::kNothing, 0, false}, Outcome::fails, "nothing"}};
    case Call::flush:
      return {error(EIO, "EIO"), error(ENOSPC, "ENOSPC"), lasting(EIO, "EIO for ever"), kInterruption};
    case Call::close_writing:
      return {error(EIO, "EIO"), error(EDQUOT, "EDQUOT"), kInterruption};
    case Call::close_reading:
      return {error(EIO, "EIO", Outcome::succeeds), kInterruption};
    case Call::rename:
      return {error(EIO, "EIO"), error(EACCES, "EACCES"), error(ENOSPC, "ENOSPC"), error(EXDEV, "EXDEV")};
    case Call::look:
      return {error(EIO, "EIO"), error(ENOMEM, "ENOMEM")};
    case Call::may_write:
      return {error(EACCES, "EACCES"), error(EROFS, "EROFS")};
    case Call::give_away:
      return {error(EPERM, "EPERM", Outcome::succeeds), lasting(EPERM, "EPERM for ever", Outcome::succeeds)};
    case Call::permit:
      return {error(EPERM, "EPERM"), error(EROFS, "EROFS")};
    case Call::follow:
      // A link whose target cannot be read is then opened by its own name, and found to be no file.
      return {error(EIO, "EIO", Outcome::either)};
    case Call::random:
      return {error(ENOSYS, "ENOSYS")};
    case Call::remove:
      return {};
  }
  return {};
}

// Where one call of one kind is made to fail, for messages.
struct Point {
  std::size_t at;
  Call call;
  Case fault_case;
};

std::ostream& operator<<(std::ostream& out, const Point& point) {
  return out << "call " << point.at << " (" << name_of(point.call) << "): " << point.fault_case.name;
}

// Runs `work` once as it is and then once for each point; `check` sees its answer. Answers how many points.
int fail_each_call(const std::function<void()>& prepare, const std::function<int()>& work,
                   const std::function<void(const Point&, int)>& check) {
  prepare();
  std::vector<Call> calls;
  {
    FaultyCalls trace;
    EXPECT_EQ(work(), 1);
    calls = trace.calls();
  }
  int points = 0;
  for (std::size_t at = 0; at < calls.size(); ++at) {
    for (const Case& fault_case : cases_of(calls[at])) {
      prepare();
      int answer = -1;
      bool struck = false;
      {
        FaultyCalls faults(at, fault_case.fault);
        answer = work();
        struck = faults.struck();
      }
      const Point point = {at, calls[at], fault_case};
      EXPECT_TRUE(struck) << point;
      if (fault_case.outcome != Outcome::either) {
        EXPECT_EQ(answer, fault_case.outcome == Outcome::succeeds ? 1 : 0) << point;
      }
      check(point, answer);
      ++points;
    }
  }
  return points;
}

bool contains(const std::vector<Call>& calls, Call call) {
  return std::find(calls.begin(), calls.end(), call) != calls.end();
}

// The calls of one undisturbed save.
std::vector<Call> calls_of_a_save(CMachDef& machine, const std::string& path) {
  FaultyCalls trace;
  EXPECT_EQ(MachdefSave(&machine, path.c_str()), 1);
  return trace.calls();
}

// As make_rich, with as many nodes more as fill the stream's buffer several times.
void make_large(CMachDef& machine) {
  make_rich(machine);
  const boost::shared_ptr<md::sg::node> root = machine.SG()[0];
  for (int i = 0; i < 2000; ++i) {
    const boost::shared_ptr<md::sg::node> n = md::sg::node::create();
    n->reset();
    n->id(1000 + i);
    root->add_child(n);
  }
  const Bytes bytes = saved(machine);
  machine.reset();
  load(machine, bytes);
}

struct Save {
  const char* name;
  void (*make)(CMachDef&);
  // Makes what is there before the save, and answers the path to save to.
  std::string (*prepare)(const ScratchFolder&);
};

std::string nothing_there(const ScratchFolder& folder) { return folder / "machine"; }

std::string old_file(const ScratchFolder& folder) {
  make_file(folder / "machine", "old");
  return folder / "machine";
}

std::string old_file_with_permissions(const ScratchFolder& folder) {
  make_file(folder / "machine", "old");
  EXPECT_EQ(::chmod((folder / "machine").c_str(), 0640), 0);
  return folder / "machine";
}

std::string link_to_old_file(const ScratchFolder& folder) {
  make_file(folder / "machine", "old");
  fs::create_symlink("machine", folder / "link");
  return folder / "link";
}

const Save kSaves[] = {{"ANewFile", make_rich, nothing_there},
                       {"OverAnOldFile", make_rich, old_file},
                       {"OverAFileWithPermissions", make_rich, old_file_with_permissions},
                       {"ThroughALink", make_rich, link_to_old_file},
                       {"ALargeMachine", make_large, old_file}};

std::ostream& operator<<(std::ostream& out, const Save& save) { return out << save.name; }

class SaveWithFaults : public testing::TestWithParam<Save> {};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Saving, SaveWithFaults, testing::ValuesIn(kSaves),
                         [](const testing::TestParamInfo<Save>& save) { return save.param.name; });

// Whatever fails: the answer is 0 and the old file stays byte for byte, or it is 1 and the new one is whole;
// nothing lies beside them, and no file stays open.
TEST_P(SaveWithFaults, LeavesTheOldFileOrTheWholeNewOne) {
  CMachDef machine;
  GetParam().make(machine);
  const Bytes bytes = saved(machine);
  std::unique_ptr<ScratchFolder> folder;
  std::string path;
  std::string before;
  Names names_before;
  std::vector<int> open_before;
  const int points = fail_each_call(
      [&] {
        folder = std::make_unique<ScratchFolder>();
        path = GetParam().prepare(*folder);
        before = contents(*folder / "machine");
        names_before = folder->names();
        open_before = open_files();
      },
      [&] { return MachdefSave(&machine, path.c_str()); },
      [&](const Point& point, int answer) {
        SCOPED_TRACE(testing::Message() << point);
        EXPECT_EQ(open_files(), open_before);
        if (answer == 1) {
          EXPECT_SAME_BYTES(contents(*folder / "machine"), bytes);
          if (names_before.empty()) names_before = {"machine"};
        } else {
          EXPECT_EQ(contents(*folder / "machine"), before);
        }
        EXPECT_EQ(folder->names(), names_before);
        EXPECT_SAME_BYTES(saved(machine), bytes);
      });
  EXPECT_GT(points, 20);
  RecordProperty("points", points);
  std::cout << "points: " << points << '\n';
}

namespace {

struct Load {
  const char* name;
  void (*make)(CMachDef&);
};

std::ostream& operator<<(std::ostream& out, const Load& load) { return out << load.name; }

class LoadWithFaults : public testing::TestWithParam<Load> {};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Loading, LoadWithFaults,
                         testing::Values(Load{"ASmallMachine", make_rich}, Load{"ALargeMachine", make_large}),
                         [](const testing::TestParamInfo<Load>& load) { return load.param.name; });

// Whatever fails: the answer is 0 and the machine can be used and loaded again, or it is 1 and the machine is
// the one in the file; the file stays as it was, and is not held open.
TEST_P(LoadWithFaults, IsRefusedOrWhole) {
  CMachDef original;
  GetParam().make(original);
  const Bytes bytes = saved(original);
  const ScratchFolder folder;
  const std::string path = folder / "machine";
  make_file(path, bytes);
  const std::vector<int> open_before = open_files();

  std::unique_ptr<CMachDef> machine;
  const int points = fail_each_call([&] { machine = std::make_unique<CMachDef>(); },
                                    [&] { return MachdefLoad(machine.get(), path.c_str()); },
                                    [&](const Point& point, int answer) {
                                      SCOPED_TRACE(testing::Message() << point);
                                      EXPECT_EQ(open_files(), open_before);
                                      EXPECT_SAME_BYTES(contents(path), bytes);
                                      if (answer == 1) {
                                        EXPECT_SAME_BYTES(saved(*machine), bytes);
                                      }
                                      CMachDef clone;
                                      clone.clone(*machine, 3);
                                      UpdateNodeAxes_2(&clone, 1, 2, 3, 0.1, 0.2, 0.3);
                                      EXPECT_EQ(MachdefLoad(machine.get(), path.c_str()), 1);
                                      EXPECT_SAME_BYTES(saved(*machine), bytes);
                                    });
  EXPECT_GT(points, 5);
  RecordProperty("points", points);
  std::cout << "points: " << points << '\n';
}

// The faults above reach nothing that the library does not call: these are the calls that it cannot do
// without.
TEST(FaultyCalls, SeeWhatASaveDoes) {
  const ScratchFolder folder;
  CMachDef machine;
  make_rich(machine);
  const std::vector<Call> calls = calls_of_a_save(machine, old_file_with_permissions(folder));
  for (const Call call :
       {Call::create, Call::write, Call::flush, Call::close_writing, Call::rename, Call::look,
        Call::may_write, Call::give_away, Call::permit, Call::random, Call::open_folder})
    EXPECT_TRUE(contains(calls, call)) << name_of(call);
}

TEST(FaultyCalls, SeeWhatALoadDoes) {
  const ScratchFolder folder;
  CMachDef machine;
  make_rich(machine);
  ASSERT_EQ(MachdefSave(&machine, (folder / "machine").c_str()), 1);
  FaultyCalls trace;
  ASSERT_EQ(MachdefLoad(&machine, (folder / "machine").c_str()), 1);
  for (const Call call : {Call::open_reading, Call::read, Call::close_reading})
    EXPECT_TRUE(contains(trace.calls(), call)) << name_of(call);
}

// A file that cannot even be removed stays, but the answer is still no and the old file is whole.
TEST(FaultyCalls, FailingRemovalOfTheNewFileKeepsTheOldOne) {
  const ScratchFolder folder;
  CMachDef machine;
  make_rich(machine);
  make_file(folder / "machine", "old");
  const std::vector<Call> calls = calls_of_a_save(machine, folder / "machine");
  make_file(folder / "machine", "old");
  const auto write =
      static_cast<std::size_t>(std::find(calls.begin(), calls.end(), Call::write) - calls.begin());
  ASSERT_LT(write, calls.size());
  {
    FaultyCalls faults(write, {Fault::kError, ENOSPC, false});
    EXPECT_EQ(MachdefSave(&machine, (folder / "machine").c_str()), 0);
    EXPECT_TRUE(contains(faults.calls(), Call::remove));
  }
  EXPECT_EQ(contents(folder / "machine"), "old");
  EXPECT_EQ(folder.names(), Names{"machine"});
}

// Who may not give the file to the old one's owner gives it to the old one's group, and tries no more.
TEST(FaultyCalls, WithoutTheOwnerTheNewFileGetsTheGroup) {
  const ScratchFolder folder;
  CMachDef machine;
  make_rich(machine);
  make_file(folder / "machine", "old");
  struct stat old;
  ASSERT_EQ(::stat((folder / "machine").c_str(), &old), 0);
  const std::vector<Call> calls = calls_of_a_save(machine, folder / "machine");
  const auto give_away =
      static_cast<std::size_t>(std::find(calls.begin(), calls.end(), Call::give_away) - calls.begin());
  ASSERT_LT(give_away, calls.size());
  FaultyCalls faults(give_away, {Fault::kError, EPERM, false});
  EXPECT_EQ(MachdefSave(&machine, (folder / "machine").c_str()), 1);
  ASSERT_EQ(faults.given_away().size(), 2U);
  EXPECT_EQ(faults.given_away()[0].owner, old.st_uid);
  EXPECT_EQ(faults.given_away()[0].group, old.st_gid);
  EXPECT_EQ(faults.given_away()[1].owner, static_cast<uid_t>(-1));
  EXPECT_EQ(faults.given_away()[1].group, old.st_gid);
}

// Once it has both there is nothing left to ask for.
TEST(FaultyCalls, WithTheOwnerTheGroupIsNotSetAgain) {
  const ScratchFolder folder;
  CMachDef machine;
  make_rich(machine);
  make_file(folder / "machine", "old");
  FaultyCalls trace;
  EXPECT_EQ(MachdefSave(&machine, (folder / "machine").c_str()), 1);
  EXPECT_EQ(trace.given_away().size(), 1U);
}
