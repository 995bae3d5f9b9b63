// SPDX-License-Identifier: MIT
#include "app/CommandLine.h"

#include "platform/dbus/FileURI.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace {

constexpr int refused = 2;
constexpr std::string_view endOfOptions = "--";
constexpr std::string_view serviceOption = "--dbus";

constexpr const char* help =
    R"(Kullanım: brenvik [SEÇENEK] [DOSYA]

Parola kasanı açar. Brenvik zaten çalışıyorsa penceresi öne gelir ve DOSYA orada açılır.

  DOSYA       açılacak .kdbx kasası
  --dbus      bir istek gelene kadar penceresiz bekler; masaüstü böyle başlatır
  --help      bu yardımı gösterir
  --version   sürümü gösterir
)";

bool isOption(std::string_view argument) {
    return argument.size() > 1 && argument.front() == '-';
}

/// A word behind one hyphen.
bool mayBeForQt(std::string_view argument) {
    return argument.size() > 2 && argument[1] != '-';
}

int refuse(const std::string& reason) {
    (void)std::fputs(("Brenvik: " + reason + " Seçenekler için: brenvik --help\n").c_str(), stderr);
    return refused;
}

std::filesystem::path fileOf(const std::string& argument) {
    if (argument.starts_with("file:"))
        if (auto path = FileURI::path(argument))
            return *path;
    std::error_code error;
    const auto path = std::filesystem::absolute(argument, error);
    return error ? std::filesystem::path(argument) : path.lexically_normal();
}

}  // namespace

std::optional<int> CommandLine::answer(const std::vector<std::string>& arguments, Reading reading) {
    for (const auto& argument : arguments) {
        if (argument == endOfOptions)
            break;
        if (argument == "--version") {
            (void)std::fputs("Brenvik " BRENVIK_VERSION "\n", stdout);
            return EXIT_SUCCESS;
        }
        if (argument == "--help") {
            (void)std::fputs(help, stdout);
            return EXIT_SUCCESS;
        }
        if (argument.empty())
            return refuse("dosya adı boş olamaz.");
        const bool isQtsTurn = reading == Reading::first && mayBeForQt(argument);
        if (isOption(argument) && argument != serviceOption && !isQtsTurn)
            return refuse("“" + argument + "” diye bir seçenek yok.");
    }
    return std::nullopt;
}

CommandLine CommandLine::read(const std::vector<std::string>& arguments) {
    CommandLine line;
    bool areFiles = false;
    for (const auto& argument : arguments) {
        if (!areFiles && argument == endOfOptions)
            areFiles = true;
        else if (!areFiles && argument == serviceOption)
            line.isService = true;
        else
            line.files.push_back(fileOf(argument));
    }
    return line;
}
