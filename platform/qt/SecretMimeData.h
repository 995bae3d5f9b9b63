// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMimeData>
#include <QStringList>

#include <span>
#include <string_view>

/// A text under marker types, for the clipboard. Its bytes are in one buffer, which is overwritten at the data's end; a
/// paste that is served from it shares that buffer.
class SecretMimeData final : public QMimeData {
public:
    SecretMimeData(std::string_view text, std::span<const std::string_view> markerTypes);
    SecretMimeData(const SecretMimeData&) = delete;
    SecretMimeData& operator=(const SecretMimeData&) = delete;
    ~SecretMimeData() override;

    /// The marker types in their order, the hint for clipboard managers, and the text's type.
    [[nodiscard]] QStringList formats() const override { return m_formats; }

protected:
    [[nodiscard]] QVariant retrieveData(const QString& format, QMetaType preferredType) const override;

private:
    QStringList m_formats;
    QByteArray m_text;  // UTF-8
};
