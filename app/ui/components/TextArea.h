// SPDX-License-Identifier: MIT
#pragma once

#include <QPlainTextEdit>

/// A text field of several lines. Tab leaves it.
class TextArea : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit TextArea(const QString& name, QWidget* parent = nullptr);

    /// Sets and gives the text as it is. A document of Qt's knows one kind of line end and one of blank only, so
    /// the text comes back to the letter as long as nothing is typed in it, and with line feeds once something is.
    /// What is too long to be edited here shows its beginning and stays to the letter: it can be copied and deleted as
    /// a whole, and not typed in.
    void setWholeText(const QString& text);
    [[nodiscard]] QString wholeText() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void setKept(bool isKept);
    [[nodiscard]] QString documentText() const;
    [[nodiscard]] bool isAllSelected() const;

    QString m_givenText;
    bool m_isKept = false;  // too long to be edited
};
