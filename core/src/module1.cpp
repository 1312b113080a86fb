#include <corvalta/core/module1.h>

namespace corvalta::core {

Module1Variables Module1;

}  // namespace corvalta::core
