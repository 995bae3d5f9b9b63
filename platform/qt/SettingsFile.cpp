// SPDX-License-Identifier: MIT
#include "platform/qt/SettingsFile.h"

#include "core/primitives/Overloaded.h"
#include "platform/posix/PrivateFolder.h"

#include <QByteArray>
#include <QJsonDocument>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <system_error>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr auto lockPatience = 2s;
constexpr auto lockPause = 5ms;
constexpr int asideNames = 100;
const QString base64Key = QStringLiteral("base64");

QString qString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QJsonValue jsonScalar(bool value) {
    return value;
}
QJsonValue jsonScalar(std::int64_t value) {
    return static_cast<qint64>(value);
}
QJsonValue jsonScalar(double value) {
    return value;
}
QJsonValue jsonScalar(const std::string& value) {
    return qString(value);
}
QJsonValue jsonScalar(const Bytes& value) {
    const auto bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(value.data()), static_cast<qsizetype>(value.size()));
    return QJsonObject{{base64Key, QString::fromLatin1(bytes.toBase64())}};
}

QJsonValue json(const SettingsValue& value) {
    return std::visit(Overloaded{
                          [](const SettingsDictionary& dictionary) -> QJsonValue {
                              QJsonObject object;
                              for (const auto& [key, scalar] : dictionary)
                                  object.insert(qString(key),
                                                std::visit([](const auto& v) { return jsonScalar(v); }, scalar));
                              return object;
                          },
                          [](const auto& scalar) { return jsonScalar(scalar); },
                      },
                      value);
}

std::optional<Bytes> bytesIn(const QJsonObject& object) {
    if (object.size() != 1 || !object.value(base64Key).isString())
        return std::nullopt;
    const auto decoded = QByteArray::fromBase64Encoding(object.value(base64Key).toString().toLatin1(),
                                                        QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        return std::nullopt;
    return Bytes(decoded.decoded.begin(), decoded.decoded.end());
}

std::optional<SettingsScalar> scalarIn(const QJsonValue& value) {
    if (value.isBool())
        return value.toBool();
    if (value.isString())
        return value.toString().toStdString();
    if (value.isObject()) {
        auto bytes = bytesIn(value.toObject());
        return bytes ? std::optional<SettingsScalar>(std::move(*bytes)) : std::nullopt;
    }
    if (!value.isDouble())
        return std::nullopt;
    // Two answers that differ mean that it is no integer.
    if (const auto integer = value.toInteger(0); integer == value.toInteger(1))
        return std::int64_t{integer};
    return value.toDouble();
}

/// What is neither bytes nor a scalar, item by item; an item of a kind that is not stored is left out.
SettingsDictionary dictionaryIn(const QJsonObject& object) {
    SettingsDictionary dictionary;
    for (auto item = object.begin(); item != object.end(); ++item)
        if (auto scalar = scalarIn(item.value()))
            dictionary.emplace(item.key().toStdString(), std::move(*scalar));
    return dictionary;
}

}  // namespace

/// Held while the file is read, changed and written. On a file of its own: the settings file is replaced by each
/// write, and a lock on what was replaced guards nothing. Some network folders have no locks: there, as where the
/// lock's file cannot be made, it goes without. What another program does in that moment may then be lost, but not all
/// that the user sets.
class SettingsFile::Lock {
public:
    explicit Lock(SettingsFile& settings)
        : m_file(
              ::open((settings.m_file.native() + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600)) {
        const auto deadline = std::chrono::steady_clock::now() + (settings.m_isPatient ? lockPatience : 0s);
        while (m_file >= 0 && settings.m_tryLock(m_file) != 0 && (errno == EWOULDBLOCK || errno == EINTR)) {
            m_isOfAnother = std::chrono::steady_clock::now() >= deadline;
            if (m_isOfAnother)
                break;
            std::this_thread::sleep_for(lockPause);
        }
        settings.m_isPatient = !m_isOfAnother;
    }
    ~Lock() {
        if (m_file >= 0)
            ::close(m_file);
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    /// Another program holds it, and has not let go of it for as long as one could wait.
    [[nodiscard]] bool isOfAnother() const noexcept { return m_isOfAnother; }

private:
    int m_file;
    bool m_isOfAnother = false;
};

SettingsFile::SettingsFile(FileStore& files, std::filesystem::path file, TryLock tryLock)
    : m_files(files), m_file(std::move(file)), m_tryLock(std::move(tryLock)) {
    if (!m_files.exists(m_file))
        return;
    const Lock lock(*this);
    m_settings = readOrPutAside().value_or(QJsonObject());
}

int SettingsFile::systemLock(int file) {
    return ::flock(file, LOCK_EX | LOCK_NB);
}

std::optional<SettingsValue> SettingsFile::value(std::string_view key) const {
    const auto found = m_settings.constFind(qString(key));
    if (found == m_settings.constEnd())
        return std::nullopt;
    if (auto scalar = scalarIn(found.value()))
        return std::visit([](auto&& v) { return SettingsValue(std::forward<decltype(v)>(v)); }, std::move(*scalar));
    if (found.value().isObject())
        return dictionaryIn(found.value().toObject());
    return std::nullopt;
}

bool SettingsFile::setValue(std::string_view key, std::optional<SettingsValue> value) {
    PrivateFolder::make(m_file.parent_path());
    const Lock lock(*this);
    if (lock.isOfAnother())
        return false;
    auto settings = readOrPutAside();
    if (!settings)
        return false;
    if (value)
        settings->insert(qString(key), json(*value));
    else
        settings->remove(qString(key));
    return write(*settings);
}

/// Nothing where a file is there and cannot be read: it is not ours to replace then.
std::optional<QJsonObject> SettingsFile::readOrPutAside() {
    try {
        const auto content = m_files.read(m_file);
        const auto text = QByteArray::fromRawData(reinterpret_cast<const char*>(content.data()),
                                                  static_cast<qsizetype>(content.size()));
        const auto document = QJsonDocument::fromJson(text);
        if (!document.isObject())
            putAside();
        return document.object();
    } catch (const FileError& error) {
        if (error.code() == ENOENT)
            return QJsonObject();
        return std::nullopt;
    }
}

void SettingsFile::putAside() {
    auto aside = m_file.native() + ".damaged";
    for (int number = 2; m_files.exists(aside) && number < asideNames; ++number)
        aside = m_file.native() + ".damaged-" + std::to_string(number);
    std::error_code error;
    std::filesystem::rename(m_file, aside, error);
}

bool SettingsFile::write(const QJsonObject& settings) {
    try {
        const auto text = QJsonDocument(settings).toJson();
        m_files.writeAtomically(m_file, bytesOf({text.constData(), static_cast<std::size_t>(text.size())}));
        m_settings = settings;
        std::error_code error;
        std::filesystem::permissions(m_file, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write,
                                     error);
        return true;
    } catch (const FileError&) {
        return false;
    }
}

std::filesystem::path SettingsFile::usualPath() {
    const auto folder = [](const char* name) {
        const char* value = std::getenv(name);
        return value ? std::filesystem::path(value) : std::filesystem::path();
    };
    auto base = folder("XDG_CONFIG_HOME");
    if (!base.is_absolute())
        base = folder("HOME") / ".config";
    return base / "brenvik" / "settings.json";
}
