// SPDX-License-Identifier: MIT
#include "tests/support/Child.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <stdexcept>

namespace {

std::uint64_t mappedBytes() {
    std::uint64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

[[noreturn]] void runAndReport(const std::function<std::string()>& call, std::optional<std::uint64_t> bound,
                               int output) {
    if (bound) {
        const rlimit limit{mappedBytes() + *bound, mappedBytes() + *bound};
        ::setrlimit(RLIMIT_AS, &limit);
    }
    const auto outcome = call();
    const bool isWritten = ::write(output, outcome.data(), outcome.size()) == static_cast<ssize_t>(outcome.size());
    ::_exit(isWritten ? 0 : 1);
}

ChildOutcome run(const std::function<std::string()>& call, std::optional<std::uint64_t> bound) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe");
    const auto child = ::fork();
    if (child < 0)
        throw std::runtime_error("no process");
    if (child == 0)
        runAndReport(call, bound, ends[1]);
    ::close(ends[1]);

    ChildOutcome result{};
    std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = ::read(ends[0], buffer.data(), buffer.size())) > 0;)
        result.outcome.append(buffer.data(), static_cast<std::size_t>(count));
    ::close(ends[0]);
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        result.outcome.clear();
    result.peakMemoryKiB = usage.ru_maxrss;
    return result;
}

}  // namespace

ChildOutcome inChild(const std::function<std::string()>& call, std::optional<std::uint64_t> addressSpaceBytes) {
    const auto idle = run([] { return std::string("idle"); }, std::nullopt);
    auto result = run(call, addressSpaceBytes);
    result.peakMemoryKiB -= idle.peakMemoryKiB;
    return result;
}
