// The texts of the axis enums.
#include <k5ax/axes.h>

std::string AXIS_TYPE2String(AXIS_TYPE type) {
  switch (type) {
    case AXIS_TYPE_INVALID_LOWEST:
      return "AXIS_TYPE_INVALID_LOWEST";
    case AXIS_A:
      return "A";
    case AXIS_B:
      return "B";
    case AXIS_C:
      return "C";
    case AXIS_X:
      return "X";
    case AXIS_Y:
      return "Y";
    case AXIS_Z:
      return "Z";
    case AXIS_DUMMY:
      return "AXIS_DUMMY";
    case AXIS_TYPE_INVALID_HIGHEST:
      return "AXIS_TYPE_INVALID_HIGHEST";
  }
  return "AXIS_TYPE_UNKNOW";  // deliberate: hosts compare this spelling
}

std::string AXIS_MODE2String(AXIS_MODE mode) {
  switch (mode) {
    case AXIS_MODE_INVALID_LOWEST:
      return "AXIS_MODE_INVALID_LOWEST";
    case ROTARY:
      return "ROTARY";
    case LINEAR:
      return "LINEAR";
    case AXIS_MODE_INVALID_HIGHEST:
      return "AXIS_MODE_INVALID_HIGHEST";
  }
  return "AXIS_MODE_UNKNOWN";
}

std::string AXIS_LOCATION2String(AXIS_LOCATION location) {
  switch (location) {
    case AXIS_LOCATION_INVALID_LOWEST:
      return "AXIS_LOCATION_INVALID_LOWEST";
    case HEAD:
      return "HEAD";
    case TABLE:
      return "TABLE";
    case AXIS_LOCATION_INVALID_HIGHEST:
      return "AXIS_LOCATION_INVALID_HIGHEST";
  }
  return "AXIS_LOCATION_UNKNOW";  // deliberate: hosts compare this spelling
}
