// SPDX-License-Identifier: MIT
#include "app/state/FailureText.h"

#include "core/primitives/Failure.h"

#include <new>
#include <stdexcept>

std::string failureText() {
    try {
        throw;
    } catch (const ReadableFailure& error) {
        return error.errorDescription();
    } catch (const std::bad_alloc&) {
        return "Bu işlem için yeterli bellek yok.";
    } catch (const std::length_error&) {
        return "Bu işlem için yeterli bellek yok.";  // a container that could not even count so far
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "Bilinmeyen bir hata oluştu.";
    }
}
