// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/SecureString.h"

#include <QWidget>

#include <vector>

/// A secret to read and not to type: a row of dots, or when revealed its characters in the monospaced face, digits and
/// signs tinted, going on in the next line where one is full. Its text is nowhere kept in the clear, can't be selected,
/// and so never reaches the primary selection.
class SecretText : public QWidget {
    Q_OBJECT

public:
    /// How many dots a secret shows: as many as it has characters, within these bounds.
    struct Dots {
        std::size_t fewest;
        std::size_t most;
    };

    /// `field` is the accessible description; the name is what shows.
    SecretText(SecureString secret, Dots dots, const QString& field, QWidget* parent = nullptr);

    [[nodiscard]] bool isRevealed() const noexcept { return m_isRevealed; }
    void setRevealed(bool isRevealed);

    /// The dots, or the secret itself, made anew at each call.
    [[nodiscard]] QString shownText() const;

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// Where a character stands among equally wide columns. A wide one takes two of them.
    struct Cell {
        int line;
        int column;
        int columns;
    };
    [[nodiscard]] std::vector<Cell> cells(const std::vector<std::string_view>& characters, int width) const;
    void paintDots(QPainter& painter) const;
    void paintCharacters(QPainter& painter, const QRect& area) const;

    SecureString m_secret;
    std::size_t m_dotCount;
    bool m_isRevealed = false;
};
