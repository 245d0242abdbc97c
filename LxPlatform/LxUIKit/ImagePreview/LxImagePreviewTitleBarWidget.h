#pragma once
// CLxImagePreviewTitleBarWidget: the image preview window's part of its title bar: zoom out and in
// on the left; previous, next, a divider, translate and reload on the right. It sits inside the
// frameless window's own title bar, so dragging on any empty part of it moves the window.
// The translate button shows its active look while a translation is shown, and is disabled while
// one is pending.

#include <LxUIKit/ImagePreview/LxImagePreviewDefine.h>
#include <LxUIKit/LxUIKitExport.h>

#include <QPointer>
#include <QWidget>

#include <memory>

class LIconButton;
class QFrame;

class LXUIKIT_EXPORT CLxImagePreviewTitleBarWidget : public QWidget {
    Q_OBJECT
public:
    explicit CLxImagePreviewTitleBarWidget(QWidget* parent = nullptr);

    void SetPreviousImageBtnEnabled(bool bEnabled);
    void SetPreviousImageBtnVisible(bool bVisible);
    void SetNextImageBtnEnabled(bool bEnabled);
    void SetNextImageBtnVisible(bool bVisible);
    void SetTranslateButtonVisible(bool bVisible);
    void SetTranslateDividerVisible(bool bVisible);
    void ApplyTranslateStateFromImageInfo(const std::shared_ptr<ImageInfo>& spInfo);

    LIconButton* GetPreviousButton() const;
    LIconButton* GetNextButton() const;
    LIconButton* GetTranslateButton() const;
    LIconButton* GetRefreshButton() const;
    LIconButton* GetZoomInButton() const;
    LIconButton* GetZoomOutButton() const;
    QFrame* GetTranslateDivider() const;

Q_SIGNALS:
    void previousClicked();
    void nextClicked();
    void translateClicked();
    void refreshClicked();
    void zoomInClicked();
    void zoomOutClicked();

protected:
    void changeEvent(QEvent* event) override;

private:
    void RetranslateUi();
    void ApplyTheme();

    QPointer<LIconButton> m_pZoomOut;
    QPointer<LIconButton> m_pZoomIn;
    QPointer<LIconButton> m_pPrevious;
    QPointer<LIconButton> m_pNext;
    QPointer<QFrame> m_pDivider;
    QPointer<LIconButton> m_pTranslate;
    QPointer<LIconButton> m_pRefresh;
    bool m_bTranslationShown = false;
};
