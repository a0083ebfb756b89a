// Leaves the process-wide callbacks and flags as every test expects them: no callback, all flags clear.
#ifndef K5AX_TESTS_FOUNDATION_UTILITY_GUARD_H
#define K5AX_TESTS_FOUNDATION_UTILITY_GUARD_H

#include <k5ax/foundation.h>

namespace k5ax_test {

inline void clear_callbacks_and_flags() {
  CUtility::set_feedback_cbk(boost::function<void(const char*)>());
  CUtility::set_error_cbk(boost::function<void(const char*, short)>());
  CUtility::set_assertion_handler_cbk(boost::function<void(const char*, const char*, const char*, long)>());
  CUtility::flags(0);
}

class UtilityGuard {
 public:
  UtilityGuard() { clear_callbacks_and_flags(); }
  UtilityGuard(const UtilityGuard&) = delete;
  UtilityGuard& operator=(const UtilityGuard&) = delete;
  ~UtilityGuard() { clear_callbacks_and_flags(); }
};

}  // namespace k5ax_test

#endif
