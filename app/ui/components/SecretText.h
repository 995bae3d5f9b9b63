// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/SecureString.h"

#include <QFont>
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
    SecretText(const SecureString& secret, Dots dots, const QString& field, QWidget* parent = nullptr);
    SecretText(std::string_view secret, Dots dots, const QString& field, QWidget* parent = nullptr);
    ~SecretText() override;

    /// Shows another secret in its place.
    void setSecret(const SecureString& secret);
    /// The usual size of the characters, and the one of a secret that takes more than two lines at the usual size.
    void setFontSizes(int usual, int whenLong);

    [[nodiscard]] bool isRevealed() const noexcept { return m_isRevealed; }
    void setRevealed(bool isRevealed);

    /// The dots, or the secret itself, made anew at each call.
    [[nodiscard]] QString shownText() const;

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    /// Where a character or a dot is among equally wide columns. A wide one takes two of them.
    struct Cell {
        int line;
        int column;
        int columns;
    };
    /// All that shows, at one size of the font.
    struct Grid {
        QFont font;
        std::vector<Cell> cells;
        [[nodiscard]] int height() const;
        /// A cell's area in a widget of that height, in whose middle the lines are.
        [[nodiscard]] QRectF box(const Cell& cell, int widgetHeight) const;
    };

    [[nodiscard]] Grid grid(int width) const;
    [[nodiscard]] const SecureString& secret() const noexcept { return m_secret; }
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] Grid grid(const std::vector<std::string_view>& characters, int width) const;
    [[nodiscard]] std::vector<Cell> cells(const std::vector<std::string_view>& characters, const QFont& font,
                                          int width) const;
    void setBeginning(std::string_view secret);
    void show(SecureString secret, std::size_t characterCount);
    void showAnew();
    void paintDots(QPainter& painter) const;
    void paintCharacters(QPainter& painter, const QRect& area) const;

    SecureString m_secret;
    Dots m_dots;
    std::size_t m_dotCount = 0;
    bool m_isRevealed = false;
    int m_usualSize;
    int m_longSize;
};
