// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

#include <functional>

class Button;
class HairlineDivider;
class QVariantAnimation;
class QVBoxLayout;
class ScrollPage;
class TextLabel;

/// A sheet's ground: a raised card that Return confirms and Escape cancels. Return on a button presses the button, and
/// in a field of several lines begins a line; with Ctrl it confirms wherever the focus is.
class SheetCard : public QWidget {
    Q_OBJECT

public:
    /// `smallest` is what it shrinks to in a small window, `ideal` what it is where there is room; in points.
    SheetCard(QSize smallest, QSize ideal, QWidget* parent = nullptr);
    /// A card of one size that holds one view, which it takes.
    SheetCard(QWidget* content, QSize size);

    void setSizes(QSize smallest, QSize ideal);
    [[nodiscard]] QSize sizeHint() const override { return m_ideal; }
    [[nodiscard]] QSize minimumSizeHint() const override { return m_smallest; }

    /// Whether there is anything to confirm now.
    void setConfirmEnabled(bool isEnabled);

    /// The field that has the focus at first; else the first stop of Tab does.
    void setFirstField(QWidget* field);
    [[nodiscard]] QWidget* firstField() const;

    /// Lets Tab walk the card as it is read, after controls have been added or have moved.
    void orderTabs();

signals:
    void cancelled();
    void confirmed();
    void confirmEnabledChanged(bool isEnabled);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void confirm();

    QSize m_smallest;
    QSize m_ideal;
    QPointer<QWidget> m_firstField;
    bool m_isConfirmEnabled = true;
};

/// The frame of the sheets that have a form: a heading, the form, which scrolls, and a bar with the two ways out.
class SheetScaffold : public SheetCard {
    Q_OBJECT

public:
    SheetScaffold(const QString& title, const QString& cancelTitle, const QString& confirmTitle,
                  QWidget* parent = nullptr);
    ~SheetScaffold() override;

    /// The line under the title; an empty one takes no room.
    void setSubtitle(const QString& subtitle);
    /// Where the form goes, cards one under the other, 12 apart.
    [[nodiscard]] QVBoxLayout* content() const noexcept;
    /// Puts something that scrolls by itself in the form's place, from edge to edge.
    void setBody(QWidget* body);

private:
    void arrange();
    void showScrolling();
    void revealFocus();

    TextLabel* m_title;
    TextLabel* m_subtitle;
    HairlineDivider* m_scrolledEdge;
    ScrollPage* m_scroll;
    Button* m_cancel;
    Button* m_confirm;
};

/// The place above a window's content where sheets appear: a dimmed backdrop and a card in its middle. What lies below
/// is disabled while a sheet shows, Tab stays within the sheet, and the focus goes back when the sheet does.
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

signals:
    /// A sheet has gone, and with it what had the focus before it came.
    void focusLost();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void placeSheet();
    void focusFirstField();
    void giveFocusBack();
    void fadeTo(double opacity, std::function<void()> then = {});

    QPointer<QWidget> m_below;
    QPointer<QWidget> m_sheet;
    QPointer<QWidget> m_formerFocus;
    QVariantAnimation* m_motion;
    double m_shown = 0;  // 0 away, 1 there
};
