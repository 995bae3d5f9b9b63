// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

#include <functional>

class Button;
class QScrollArea;
class QVariantAnimation;
class QVBoxLayout;
class TextLabel;

/// A sheet's card: a heading, a form that scrolls, and a bar with the two ways out. Return confirms, Escape cancels.
class SheetScaffold : public QWidget {
    Q_OBJECT

public:
    SheetScaffold(const QString& title, const QString& cancelTitle, const QString& confirmTitle,
                  QWidget* parent = nullptr);

    void setSubtitle(const QString& subtitle);
    void setConfirmTitle(const QString& title);
    void setConfirmEnabled(bool isEnabled);
    /// Where the form goes, cards one under the other, 12 apart.
    [[nodiscard]] QVBoxLayout* content() const noexcept { return m_content; }
    /// The smallest and the preferred size of the card, in points.
    void setSizes(QSize smallest, QSize ideal);
    [[nodiscard]] QSize sizeHint() const override { return m_ideal; }
    [[nodiscard]] QSize minimumSizeHint() const override { return m_smallest; }

signals:
    void cancelled();
    void confirmed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void arrange();

    TextLabel* m_title;
    TextLabel* m_subtitle;
    QScrollArea* m_scroll;
    QVBoxLayout* m_content;
    Button* m_cancel;
    Button* m_confirm;
    QSize m_smallest{380, 320};
    QSize m_ideal{560, 640};
};

/// The place above a window's content where sheets appear: a dimmed backdrop and a card in its middle. What lies below
/// is disabled while a sheet shows, and gets the focus back when it goes.
class SheetHost : public QWidget {
    Q_OBJECT

public:
    /// Covers `parent`; `below` is what is disabled meanwhile, a sibling.
    SheetHost(QWidget* below, QWidget* parent);

    /// Shows a sheet in place of the present one, and takes it.
    void present(QWidget* sheet);
    /// Takes the present sheet away.
    void dismiss();
    [[nodiscard]] QWidget* sheet() const { return m_sheet; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void placeSheet();
    void fadeTo(double opacity, std::function<void()> then = {});

    QPointer<QWidget> m_below;
    QPointer<QWidget> m_sheet;
    QPointer<QWidget> m_formerFocus;
    QVariantAnimation* m_motion;
    double m_shown = 0;  // 0 away, 1 there
};
