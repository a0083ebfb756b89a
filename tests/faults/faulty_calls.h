// Lets one system call of a save or a load fail: the calls are numbered as they come, and a fault is given to
// one number.
#ifndef K5AX_TESTS_FAULTS_FAULTY_CALLS_H
#define K5AX_TESTS_FAULTS_FAULTY_CALLS_H

#include <cstddef>
#include <vector>

namespace k5ax_test {

enum class Call {
  open_reading,  // a file to be read, or a device
  open_folder,   // the folder that a new file is made in
  create,        // the new file
  read,
  write,
  flush,
  close_reading,  // what only was read, the folder included
  close_writing,
  rename,
  remove,
  look,       // stat and its relations
  may_write,  // faccessat
  give_away,  // fchown
  permit,     // fchmod
  follow,     // readlink
  random
};

const char* name_of(Call call);

// What happens to a call instead of, or beside, what it asks for.
struct Fault {
  enum Kind {
    kError,        // it fails with `code` and does nothing (a close does close)
    kInterrupted,  // it fails with EINTR, once; what comes next is a call of its own
    kOneByte,      // a transfer moves one byte
    kNothing       // a transfer moves nothing and reports no error
  };

  Kind kind = kError;
  int code = 0;
  bool lasting = false;  // all later calls of the same sort fail in the same way
};

// What one call of fchown asked for.
struct Ownership {
  unsigned int owner;  // as the call has it: all bits set for one that stays
  unsigned int group;
};

// While it lives, the calls of this program that files are made of are numbered, and the one with the number
// `at` gets the fault. No two at a time; the test makes no file of its own meanwhile.
class FaultyCalls {
 public:
  FaultyCalls();
  FaultyCalls(std::size_t at, const Fault& fault);
  ~FaultyCalls();
  FaultyCalls(const FaultyCalls&) = delete;
  FaultyCalls& operator=(const FaultyCalls&) = delete;

  // The calls so far, in order.
  const std::vector<Call>& calls() const { return m_calls; }
  bool struck() const { return m_struck; }
  // The owners and groups that were asked for, in order, granted or not.
  const std::vector<Ownership>& given_away() const { return m_given_away; }

  // For the replaced functions: the fault of this call, or null when it is to do its work.
  static const Fault* next(Call call);
  static void note(const Ownership& ownership);

 private:
  std::vector<Call> m_calls;
  std::vector<Ownership> m_given_away;
  std::size_t m_at;
  Fault m_fault;
  bool m_struck = false;
};

}  // namespace k5ax_test

#endif
