// CUtility: the channels to the host, the process-wide switches, and the constant points.
#include <k5ax/foundation.h>

namespace {

constexpr unsigned int kDeveloperBit = 2;
constexpr unsigned int kRegressionBit = 4;

}  // namespace

const Geometry::TPoint<double> CUtility::pt_o(0, 0, 0);
const Geometry::TPoint<double> CUtility::pt_x(1, 0, 0);
const Geometry::TPoint<double> CUtility::pt_y(0, 1, 0);
const Geometry::TPoint<double> CUtility::pt_z(0, 0, 1);

boost::function<void(const char*)> CUtility::_feedback;
boost::function<void(const char*, short)> CUtility::_error;
boost::function<void(const char*, const char*, const char*, long)> CUtility::_fassert_handler;
unsigned int CUtility::_flags = 0;

// The callers' copies are swapped in, so that a copy that fails to be made leaves the sink that was there.

void CUtility::set_feedback_cbk(boost::function<void(const char*)> f) { _feedback.swap(f); }

void CUtility::set_error_cbk(boost::function<void(const char*, short)> f) { _error.swap(f); }

void CUtility::set_assertion_handler_cbk(
    boost::function<void(const char*, const char*, const char*, long)> f) {
  _fassert_handler.swap(f);
}

void CUtility::feedback(const std::string& text) {
  if (_feedback) _feedback(text.c_str());
}

void CUtility::error(const std::string& text, int code) {
  // Deliberate: hosts' sinks take a short, and compare the low 16 bits that they have always seen.
  if (_error) _error(text.c_str(), static_cast<short>(code));
}

void CUtility::assertion_failed(const char* a, const char* b, const char* c, long line) {
  if (_fassert_handler) _fassert_handler(a, b, c, line);
}

bool CUtility::developer() { return (_flags & kDeveloperBit) != 0; }

void CUtility::developer(bool on) { _flags = on ? _flags | kDeveloperBit : _flags & ~kDeveloperBit; }

bool CUtility::regression() { return (_flags & kRegressionBit) != 0; }

void CUtility::regression(bool on) { _flags = on ? _flags | kRegressionBit : _flags & ~kRegressionBit; }

unsigned int CUtility::flags() { return _flags; }

void CUtility::flags(unsigned int word) { _flags = word; }

extern "C" unsigned int md_flags_get(void) { return CUtility::flags(); }

extern "C" void md_flags_set(unsigned int flags) { CUtility::flags(flags); }

extern "C" int md_regression(void) { return CUtility::regression() ? 1 : 0; }
