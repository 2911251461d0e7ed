// The bodies of libc++'s exception classes that the module can throw. Their texts are constants, or copied
// once and shared by all copies of the exception.
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <stdexcept>
#include <variant>

namespace {

/// The count of sharers lies before the text.
struct SharedText {
  volatile long sharers;
};

SharedText* sharedText(const char* text) {
  return reinterpret_cast<SharedText*>(const_cast<char*>(text)) - 1;
}

}  // namespace

namespace std {

exception::~exception() noexcept = default;
const char* exception::what() const noexcept {
  return "std::exception";
}

bad_alloc::bad_alloc() noexcept = default;
bad_alloc::~bad_alloc() noexcept = default;
const char* bad_alloc::what() const noexcept {
  return "std::bad_alloc";
}

bad_array_new_length::bad_array_new_length() noexcept = default;
bad_array_new_length::~bad_array_new_length() noexcept = default;
const char* bad_array_new_length::what() const noexcept {
  return "bad_array_new_length";
}

const char* bad_variant_access::what() const noexcept {
  return "bad_variant_access";
}

inline namespace __1 {

__libcpp_refstring::__libcpp_refstring(const char* text) {
  const size_t size = strlen(text) + 1;
  auto* const sharedP = static_cast<SharedText*>(::operator new(sizeof(SharedText) + size));
  sharedP->sharers = 1;
  __imp_ = static_cast<const char*>(memcpy(sharedP + 1, text, size));
}
__libcpp_refstring::__libcpp_refstring(const __libcpp_refstring& other) noexcept : __imp_(other.__imp_) {
  __atomic_add_fetch(&sharedText(__imp_)->sharers, 1, __ATOMIC_RELAXED);
}
__libcpp_refstring::~__libcpp_refstring() {
  if (__atomic_sub_fetch(&sharedText(__imp_)->sharers, 1, __ATOMIC_ACQ_REL) == 0)
    ::operator delete(sharedText(__imp_));
}

}  // namespace __1

logic_error::logic_error(const char* text) : __imp_(text) {}
logic_error::logic_error(const logic_error& other) noexcept : exception(other), __imp_(other.__imp_) {}
logic_error::~logic_error() noexcept = default;
const char* logic_error::what() const noexcept {
  return __imp_.c_str();
}
length_error::~length_error() noexcept = default;
out_of_range::~out_of_range() noexcept = default;

}  // namespace std

/// What the compiler calls when an exception leaves a function that promised to throw none.
extern "C" [[noreturn]] void __std_terminate() {
  std::abort();
}
