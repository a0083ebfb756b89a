// What stops the host: an input that cannot be used.
#ifndef K5AX_EXAMPLES_HOST_INPUT_ERROR_H
#define K5AX_EXAMPLES_HOST_INPUT_ERROR_H

#include <stdexcept>

namespace host {

// what() is one line for the user: the file, the line in it if there is one, what is wrong, the remedy.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace host

#endif
