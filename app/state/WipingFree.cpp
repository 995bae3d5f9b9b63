// SPDX-License-Identifier: MIT
#include "core/primitives/Bytes.h"

#include <malloc.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define BRENVIK_HAS_ADDRESS_SANITIZER
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define BRENVIK_HAS_ADDRESS_SANITIZER
#endif

// A vault's texts pass through strings, lists and maps of the standard library and through what lays out text, keeps a
// form's history and speaks to the desktop. All of them give their memory back as it is, so that a field would lie in
// free memory for hours after the vault was locked. So nothing in this process gives memory back unwiped, whichever
// library asks: what a program defines under these names comes before the C library's own for all of them, `operator
// delete` included. The memory itself is the C library's as ever. The sanitizer has its own functions here, which watch
// over that memory.
#ifndef BRENVIK_HAS_ADDRESS_SANITIZER

// All these names are given, and `operator new` stays as it is.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming,misc-new-delete-overloads,cert-dcl54-cpp)
extern "C" {

// The C library's own, under the names that it keeps for programs that replace them.
void __libc_free(void* memory);
void* __libc_malloc(std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void free(void* ptr) noexcept {
    if (!ptr)
        return;
    secureWipe(ptr, malloc_usable_size(ptr));
    __libc_free(ptr);
}

/// Memory that moves is wiped where it was, and memory that shrinks at its end.
void* realloc(void* ptr, std::size_t size) noexcept {
    if (!ptr || size == 0) {
        free(ptr);
        return size == 0 && ptr ? nullptr : __libc_malloc(size);
    }
    const auto held = malloc_usable_size(ptr);
    if (size <= held) {
        // A block that is not moved keeps its end as well: small ones are not worth a move.
        secureWipe(static_cast<char*>(ptr) + size, held - size);
        return __libc_realloc(ptr, size);
    }
    void* const moved = __libc_malloc(size);
    if (!moved)
        return nullptr;
    std::memcpy(moved, ptr, held);
    free(ptr);
    return moved;
}

void* reallocarray(void* ptr, std::size_t nmemb, std::size_t size) noexcept {
    std::size_t bytes = 0;
    if (__builtin_mul_overflow(nmemb, size, &bytes)) {
        errno = ENOMEM;
        return nullptr;
    }
    return realloc(ptr, bytes);
}

}  // extern "C"

void operator delete(void* memory) noexcept {
    free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    free(memory);
}

void operator delete(void* memory, std::align_val_t) noexcept {
    free(memory);
}

void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    free(memory);
}

// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming,misc-new-delete-overloads,cert-dcl54-cpp)

#endif
