// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/FileWatcher.h"

#include <QFile>
#include <QFileSystemWatcher>
#include <QObject>

class QSocketNotifier;

/// The kernel's notices, on Qt's event loop: on the file; on its folder, since most programs replace the file; on the
/// mounts, since a disk that comes changes no folder. There is none on a change that another machine makes on a network
/// disk.
class QtFileWatcher final : public QObject, public FileWatcher {
public:
    explicit QtFileWatcher(QObject* parent = nullptr);

    void watch(const std::optional<std::filesystem::path>& file, Noticed noticed) override;

private:
    void renew();
    void notice();

    QFileSystemWatcher m_watcher;
    QFile m_mounts;
    QSocketNotifier* m_mountNotifier = nullptr;  // null where the system gives no notice of mounts
    std::optional<std::filesystem::path> m_file;
    Noticed m_noticed;
};
