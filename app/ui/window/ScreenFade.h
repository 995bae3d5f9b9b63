// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QWidget>

class QVariantAnimation;

/// Lets one screen go while another comes: a picture of the one that leaves is over the new one and fades. The new
/// one works from the first moment.
class ScreenFade : public QWidget {
    Q_OBJECT

public:
    /// Covers `parent` while it fades.
    explicit ScreenFade(QWidget* parent);
    ~ScreenFade() override;

    /// What a screen looks like now; nothing where motion is reduced.
    [[nodiscard]] static QImage pictureOf(QWidget& screen);

    /// Fades from a picture, or from bare ground where it is empty. Does nothing where motion is reduced.
    void start(QImage picture);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void end();

    QVariantAnimation* m_motion;
    QImage m_picture;
};
