// operator new and delete over the C library's heap, which is the host's own.
#include <cstdlib>
#include <new>

const std::nothrow_t std::nothrow{};

void* operator new(std::size_t size, const std::nothrow_t& /*unused*/) noexcept {
  return std::malloc(size == 0 ? 1 : size);
}

void* operator new(std::size_t size) {
  void* const memoryP = operator new(size, std::nothrow);
  if (memoryP == nullptr) throw std::bad_alloc();
  return memoryP;
}

void* operator new[](std::size_t size) {
  return operator new(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*unused*/) noexcept {
  return operator new(size, std::nothrow);
}

void operator delete(void* memoryP) noexcept {
  std::free(memoryP);
}
void operator delete(void* memoryP, std::size_t /*size*/) noexcept {
  std::free(memoryP);
}
void operator delete(void* memoryP, const std::nothrow_t& /*unused*/) noexcept {
  std::free(memoryP);
}
void operator delete[](void* memoryP) noexcept {
  std::free(memoryP);
}
void operator delete[](void* memoryP, std::size_t /*size*/) noexcept {
  std::free(memoryP);
}
void operator delete[](void* memoryP, const std::nothrow_t& /*unused*/) noexcept {
  std::free(memoryP);
}
