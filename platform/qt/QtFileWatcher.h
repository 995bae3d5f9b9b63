// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/FileWatcher.h"

#include <QFile>
#include <QFileSystemWatcher>
#include <QObject>

class QSocketNotifier;

/// The kernel's notices, on Qt's event loop: of the file, of its folder, since most programs put a new file in its
/// place, and of the mounts, since a disk that comes tells no folder. A change that another machine makes on a network
/// disk has no notice.
class QtFileWatcher final : public QObject, public FileWatcher {
public:
    explicit QtFileWatcher(QObject* parent = nullptr);

    void watch(const std::optional<std::filesystem::path>& file, Noticed noticed) override;

private:
    void renew();
    void notice();

    QFileSystemWatcher m_watcher;
    QFile m_mounts;
    QSocketNotifier* m_mountNotifier = nullptr;  // null where the system does not tell of mounts
    std::optional<std::filesystem::path> m_file;
    Noticed m_noticed;
};
