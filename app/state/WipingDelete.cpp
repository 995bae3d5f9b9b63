// SPDX-License-Identifier: MIT
#include "core/primitives/Bytes.h"

#include <malloc.h>

#include <cstdlib>
#include <new>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define BRENVIK_HAS_ADDRESS_SANITIZER
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define BRENVIK_HAS_ADDRESS_SANITIZER
#endif

// A vault's texts pass through strings, lists and maps of the standard library, which give their memory back as it is:
// a field that the user wants protected would lie in free memory for hours after the vault was locked. So nothing in
// this program gives memory back unwiped. Memory comes from malloc as ever. The sanitizer has its own functions here,
// which watch over that memory.
#ifndef BRENVIK_HAS_ADDRESS_SANITIZER

void operator delete(void* memory) noexcept {
    secureWipe(memory, malloc_usable_size(memory));
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    ::operator delete(memory);
}

void operator delete(void* memory, std::align_val_t) noexcept {
    ::operator delete(memory);
}

void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    ::operator delete(memory);
}

#endif
