#pragma once
// CLxImagePreviewWnd: the one window of the process that shows a list of pictures full size.
// The user steps through them (buttons, Left / Right keys, no wrap-around), zooms and drags
// (CLxImagePreviewContentWidget), copies the current picture (context menu, toasts) and has it
// translated (CLxImagePreviewTranslateTask; the translate button then switches between the
// translation and the original).
//
// Opening: from a list of ImageInfo, or from a JSON request {"params": {"data": [{"url", "width",
// "height"}, ...], "index": n}} (an "index" beside "params" is read when "params" has none).
// Opening again replaces the list and sizes the window anew for the picture shown
// (CLxImagePreviewHelper, screen under the mouse); stepping to another picture fits it to the open
// window unless the user zoomed it.
//
// Translation: only a loaded still picture (raster or SVG) can be translated; animated pictures
// cannot (the translation would freeze one frame). Each request takes a new id; an answer whose id
// or picture is no longer current is dropped. Stepping away, reloading, opening anew and closing
// end the request in flight.
//
// The title bar is the frameless window's own (draggable, resizable from the edges) with
// CLxImagePreviewTitleBarWidget in it.

#include <LxStdUI/LFrameLessWnd.h>
#include <LxUIKit/ImagePreview/LxImagePreviewDefine.h>
#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/WebImage/LxWebImageDefine.h>

#include <QPointer>
#include <QVector>

#include <memory>

namespace Json {
class Value;
}
class QMenu;
class LxWebImageWidget;
class CLxImagePreviewContentWidget;
class CLxImagePreviewTitleBarWidget;
class CLxImagePreviewTranslateTask;

class LXUIKIT_EXPORT CLxImagePreviewWnd : public LFrameLessWnd {
    Q_OBJECT
public:
    static CLxImagePreviewWnd& instance();
    static CLxImagePreviewWnd* instancePtr();

    void OpenImagePreviewWnd(const QVector<std::shared_ptr<ImageInfo>>& images, int index);
    // False (logged) when the request names no pictures.
    bool OpenImagePreviewWnd(const Json::Value& json);
    // The pictures and the starting index of a JSON request; false (logged) when it has none.
    static bool GetParamsData(const Json::Value& json, QVector<std::shared_ptr<ImageInfo>>& images, int& index);

    void OnPreviousImage();
    void OnNextImage();
    void SetImage(int index);
    void OnRefreshBtnClicked();
    void OnTranslateBtnClicked();
    bool CopyCurrentImage();
    bool CanCopyCurrentImage() const;
    void OnCopyAction();
    void OnShowCopyContextMenu(const QPoint& pos);
    void DeleteImageInfoByUniqueID(unsigned long u64UniqueId);
    std::shared_ptr<ImageInfo> GetCurrentImageInfo() const;
    void CancelInFlightTranslateTask();
    void AbandonInFlightTranslateTask();
    bool IsCurrentImageTranslatable() const;

    // Window size for an image area: the area plus the frame and the title bar.
    QSize GetWindowRealSize(const QSize& imageArea) const;

    int GetCurrentIndex() const { return m_i32CurIndex; }
    int GetImageCount() const { return m_vecImages.size(); }
    CLxImagePreviewTitleBarWidget* GetTitleBar() const;
    CLxImagePreviewContentWidget* GetContentWidget() const;
    CLxImagePreviewTranslateTask* GetTranslateTask() const;
    QMenu* GetContextMenu() const;

protected:
    void keyReleaseEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    explicit CLxImagePreviewWnd(QWidget* parent = nullptr);
    ~CLxImagePreviewWnd() override;

    void OnClose();
    void OnImageLoadStatus(const QString& url, LxImageLoadStatus status);
    void OnTranslateResult(unsigned long requestId, unsigned int index, const ImageTranslateResult& result);
    unsigned long GenerateTranslateRequestId() { return ++m_u64TranslateRequestCounter; }
    void ApplyImageState();
    void SetImage(int index, bool bFirstShow);

    QVector<std::shared_ptr<ImageInfo>> m_vecImages;
    int m_i32CurIndex = -1;
    QPointer<CLxImagePreviewTitleBarWidget> m_pTitleBar;
    QPointer<CLxImagePreviewContentWidget> m_pContent;
    QPointer<LxWebImageWidget> m_pImgWidget;
    QPointer<CLxImagePreviewTranslateTask> m_pTranslateTask;
    QPointer<QMenu> m_pContextMenu;
    unsigned long m_u64TranslateRequestCounter = 0;
    unsigned long m_u64CurTranslateRequestId = 0;
};
