#pragma once

#include <stdexcept>
#include <string>

namespace corvalta::platform {

// Any use of an object that isn't there: a control name that a window lacks, a sound that
// could not be had, a window class that nobody registered.
class NilObjectException : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A row, column or position outside what a list holds.
class OutOfBoundsException : public std::out_of_range {
 public:
  using std::out_of_range::out_of_range;
};

}  // namespace corvalta::platform
