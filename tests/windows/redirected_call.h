// Lets a test take the place of a function that the library calls.
#ifndef K5AX_TESTS_WINDOWS_REDIRECTED_CALL_H
#define K5AX_TESTS_WINDOWS_REDIRECTED_CALL_H

namespace k5ax_test {

using AnyFunction = void (*)();

// While it lives, the library's calls of the system's function of that name arrive at the replacement; the
// test's own do not. Throws where the library does not call it.
class RedirectedCall {
 public:
  RedirectedCall(const char* name, AnyFunction replacement);
  RedirectedCall(const RedirectedCall&) = delete;
  RedirectedCall& operator=(const RedirectedCall&) = delete;
  ~RedirectedCall();

 private:
  AnyFunction* m_place;
  AnyFunction m_before;
};

}  // namespace k5ax_test

#endif
