// SPDX-License-Identifier: MIT
#include "platform/qt/QtFileWatcher.h"

#include <QSocketNotifier>
#include <QStringList>

#include <system_error>
#include <utility>

namespace {

QString qtPath(const std::filesystem::path& path) {
    return QFile::decodeName(path.c_str());
}

/// The folder itself, or what there is of the way to it.
std::filesystem::path existingFolder(std::filesystem::path folder) {
    std::error_code error;
    while (!std::filesystem::is_directory(folder, error) && folder.has_relative_path())
        folder = folder.parent_path();
    return folder;
}

/// The file where there is one, and the folder in which it may come.
void addTo(QStringList& paths, const std::filesystem::path& file) {
    std::error_code error;
    if (std::filesystem::exists(file, error))
        paths += qtPath(file);
    paths += qtPath(existingFolder(file.parent_path()));
}

}  // namespace

QtFileWatcher::QtFileWatcher(QObject* parent) : QObject(parent), m_mounts(QStringLiteral("/proc/self/mountinfo")) {
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &QtFileWatcher::notice);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &QtFileWatcher::notice);
    if (!m_mounts.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return;
    m_mountNotifier = new QSocketNotifier(m_mounts.handle(), QSocketNotifier::Exception, this);
    connect(m_mountNotifier, &QSocketNotifier::activated, this, &QtFileWatcher::notice);
}

void QtFileWatcher::watch(const std::optional<std::filesystem::path>& file, Noticed noticed) {
    m_file = file;
    m_noticed = std::move(noticed);
    renew();
}

// All anew each time: a watch stays with the file that had the name, not with the one that has it now.
void QtFileWatcher::renew() {
    if (const auto paths = m_watcher.files() + m_watcher.directories(); !paths.isEmpty())
        m_watcher.removePaths(paths);
    if (!m_file)
        return;
    QStringList paths;
    std::error_code error;
    const auto file = std::filesystem::absolute(*m_file, error);
    addTo(paths, file);
    if (const auto real = std::filesystem::weakly_canonical(file, error); !error && real != file)
        addTo(paths, real);
    paths.removeDuplicates();
    m_watcher.addPaths(paths);
}

void QtFileWatcher::notice() {
    if (!m_file)
        return;
    renew();
    m_noticed();
}
