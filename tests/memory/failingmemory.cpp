#include "tests/memory/failingmemory.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

#ifdef QUILLON_SANITIZED
#define REAL(function) __interceptor_##function
#else
#define REAL(function) __libc_##function
#endif

extern "C" {
void* REAL(malloc)(std::size_t size);
void* REAL(calloc)(std::size_t count, std::size_t size);
void* REAL(realloc)(void* block, std::size_t size);
}

namespace {

std::atomic<bool> ACTIVE = false;
std::atomic<bool> ONCE = false;
std::atomic<long> LEFT = 0;
std::atomic<bool> FAILED = false;
thread_local int SPARED = 0;

bool fails() {
    if (!ACTIVE || SPARED > 0 || LEFT-- > 0)
        return false;
    FAILED = true;
    if (ONCE)
        ACTIVE = false;
    return true;
}

} // namespace

namespace failing_memory {

void begin(long good, Failures failures) {
    LEFT = good;
    ONCE = failures == Failures::Once;
    FAILED = false;
    ACTIVE = true;
}

bool hasFailed() {
    return FAILED;
}

void end() {
    ACTIVE = false;
}

Spared::Spared() {
    ++SPARED;
}

Spared::~Spared() {
    --SPARED;
}

} // namespace failing_memory

// The toolkit's library must find these before the C library's.
#pragma GCC visibility push(default)

extern "C" void* malloc(std::size_t size) {
    return fails() ? nullptr : REAL(malloc)(size);
}

extern "C" void* calloc(std::size_t count, std::size_t size) {
    return fails() ? nullptr : REAL(calloc)(count, size);
}

extern "C" void* realloc(void* block, std::size_t size) {
    return fails() ? nullptr : REAL(realloc)(block, size);
}

void* operator new(std::size_t size) {
    if (void* block = malloc(size))
        return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    std::free(block);
}

#pragma GCC visibility pop
