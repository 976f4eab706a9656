// Freed memory is overwritten in this program, so that a test sees what is read from it.

#include <malloc.h>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

void Free(void* memory) noexcept {
    constexpr int kFreed = 0xDD;
    if (memory != nullptr) std::memset(memory, kFreed, _msize(memory));
    std::free(memory);
}

}  // namespace

void* operator new(std::size_t size) {
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
