// SPDX-License-Identifier: MIT
#include "app/ui/components/IconPicker.h"

#include "app/ui/components/EntryIcon.h"
#include "app/ui/components/Popover.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Symbol.h"
#include "app/ui/theme/Theme.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace {

constexpr int pickerWidth = 44;
constexpr int columns = 6;
constexpr int choiceSide = 32;
constexpr int symbolSide = 16;

void paintSymbol(QPainter& painter, const QRectF& area, std::int64_t iconID) {
    const QPointF middle = area.center();
    Symbol::paint(painter, QRectF(middle.x() - symbolSide / 2.0, middle.y() - symbolSide / 2.0, symbolSide, symbolSide),
                  EntryIcon::symbol(iconID), EntryIcon::tint(iconID));
}

/// One icon to choose.
class Choice final : public QAbstractButton {
public:
    Choice(std::int64_t iconID, bool isCurrent, QWidget* parent)
        : QAbstractButton(parent), m_iconID(iconID), m_isCurrent(isCurrent) {
        setFixedSize(choiceSide, choiceSide);
        setFocusPolicy(Qt::StrongFocus);
        setAccessibleName(EntryIcon::name(iconID));
        setAccessibleDescription(isCurrent ? QStringLiteral("Seçili") : QString());
        setToolTip(EntryIcon::name(iconID));
        setAttribute(Qt::WA_Hover);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QColor ground = isDown() ? Palette::line : (underMouse() ? Palette::hover : QColor());
        Painting::roundedBox(painter, rect(), Radius::control, m_isCurrent ? Palette::selection() : ground,
                             m_isCurrent ? Palette::accent : QColor());
        paintSymbol(painter, rect(), m_iconID);
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() >= Qt::Key_Left && event->key() <= Qt::Key_Down)
            event->ignore();  // the grid's, which knows the neighbours
        else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            click();
        else
            QAbstractButton::keyPressEvent(event);
    }

private:
    std::int64_t m_iconID;
    bool m_isCurrent;
};

/// The choices in rows, walked with the arrow keys.
class Grid final : public QWidget {
public:
    Grid() : m_cells(new QGridLayout(this)) {
        m_cells->setContentsMargins(0, 0, 0, 0);
        m_cells->setSpacing(Metric::s);
    }
    void add(QWidget* choice) {
        const int count = m_cells->count();
        m_cells->addWidget(choice, count / columns, count % columns);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        const int step = stepOf(event->key());
        const int next = m_cells->indexOf(focusWidget()) + step;
        if (step == 0)
            return QWidget::keyPressEvent(event);
        if (next >= 0 && next < m_cells->count())
            m_cells->itemAt(next)->widget()->setFocus(Qt::OtherFocusReason);
    }

private:
    [[nodiscard]] int stepOf(int key) const {
        const int forward = layoutDirection() == Qt::RightToLeft ? -1 : 1;
        switch (key) {
            case Qt::Key_Left:
                return -forward;
            case Qt::Key_Right:
                return forward;
            case Qt::Key_Up:
                return -columns;
            case Qt::Key_Down:
                return columns;
            default:
                return 0;
        }
    }

    QGridLayout* m_cells;
};

}  // namespace

IconPicker::IconPicker(std::int64_t iconID, QWidget* parent) : QAbstractButton(parent), m_iconID(iconID - 1) {
    setAccessibleName(QStringLiteral("Simge seç"));
    setToolTip(QStringLiteral("Simge seç"));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setIconID(iconID);
    connect(this, &IconPicker::clicked, this, &IconPicker::expand);
}

void IconPicker::setIconID(std::int64_t iconID) {
    if (std::exchange(m_iconID, iconID) == iconID)
        return;
    setAccessibleDescription(EntryIcon::name(iconID));
    update();
}

QSize IconPicker::sizeHint() const {
    return {pickerWidth, Metric::controlHeight};
}

void IconPicker::expand() {
    if (m_popover)
        return;
    m_popover = new Popover(QStringLiteral("Simge seç"), this);
    auto* const grid = makeGrid(*m_popover);
    m_popover->content()->addWidget(grid);
    connect(m_popover, &Popover::closed, this, [this] {
        m_popover->deleteLater();
        m_popover = nullptr;
        update();
    });
    const auto current = EntryIcon::choices().indexOf(m_iconID);
    m_popover->open(grid->layout()->itemAt(static_cast<int>(std::max<qsizetype>(current, 0)))->widget());
    update();
}

QWidget* IconPicker::makeGrid(Popover& popover) {
    auto* const grid = new Grid;
    for (const auto iconID : EntryIcon::choices()) {
        auto* const choice = new Choice(iconID, iconID == m_iconID, grid);
        grid->add(choice);
        connect(choice, &QAbstractButton::clicked, this, [this, iconID, &popover] {
            setIconID(iconID);
            popover.close();
        });
    }
    return grid;
}

void IconPicker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const bool isActive = underMouse() || isDown() || isExpanded();
    Painting::roundedBox(painter, rect(), Radius::control, isActive ? Palette::hover : Palette::canvas,
                         isExpanded() ? Palette::accent : Palette::line);
    paintSymbol(painter, rect(), m_iconID);
}
