#pragma once
// LSwitch: an on/off switch (36 x 20): a rounded track, the accent colour when on and the border
// colour when off, with a white knob that slides to the on side in 120 ms. Checkable; toggled(bool)
// is QAbstractButton's. Hover lightens the track, disabled fades it. Colours follow the theme.

#include <LxStdUI/LxStdUIExport.h>
#include <QAbstractButton>

class QVariantAnimation;

class LXSTDUI_EXPORT LSwitch : public QAbstractButton {
    Q_OBJECT
public:
    explicit LSwitch(QWidget* parent = nullptr);

    QSize sizeHint() const override { return QSize(36, 20); }
    QSize minimumSizeHint() const override { return sizeHint(); }
    // Knob position, 0 (off side) to 1 (on side); settles at the checked state.
    double knobPosition() const { return m_dKnob; }

protected:
    void paintEvent(QPaintEvent* e) override;
    void enterEvent(QEvent* e) override;
    void leaveEvent(QEvent* e) override;
    void checkStateSet() override;
    void nextCheckState() override;

private:
    void Animate();

    double m_dKnob = 0;
    bool m_bHover = false;
    QVariantAnimation* m_pAnim = nullptr;
};
