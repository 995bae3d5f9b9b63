// SPDX-License-Identifier: MIT
#include "app/state/FailureText.h"

#include "core/model/KdbxError.h"
#include "core/platform/FileStore.h"
#include "core/primitives/AESCipher.h"
#include "core/primitives/Argon2.h"
#include "core/primitives/Gzip.h"

#include <new>
#include <stdexcept>

std::string failureText() {
    try {
        throw;
    } catch (const KdbxError& error) {
        return error.errorDescription();
    } catch (const AESCipher::Error& error) {
        return error.errorDescription();
    } catch (const Argon2::Error& error) {
        return error.errorDescription();
    } catch (const Gzip::Error& error) {
        return error.errorDescription();
    } catch (const FileError& error) {
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
