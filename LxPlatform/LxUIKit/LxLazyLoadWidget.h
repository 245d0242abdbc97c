#pragma once
// CLazyLoadWidget: a container whose content is built by a creator on first show (mode 0, the
// default) or on first paint (mode 1). Mode 1 suits long lists: a row that is shown but scrolled
// out of view, or covered, never pays for its content. The creator runs at most once, even when
// it returns null or when the creation re-enters the widget's events.

#include <LxCore/SafeFunction.h>
#include <LxUIKit/LxUIKitExport.h>

#include <QWidget>

namespace core {
namespace pattern {

class LXUIKIT_EXPORT CLazyLoadWidget : public QWidget {
    Q_OBJECT
public:
    enum CreateMode { CreateOnShow = 0, CreateOnPaint = 1 };

    CLazyLoadWidget(QWidget* parent, CSafeFunction<QWidget*()> creator);

    void SetCreateMode(CreateMode mode) { m_enMode = mode; }
    CreateMode GetCreateMode() const { return m_enMode; }
    void EnsureCreateContent();
    bool IsContentCreated() const { return m_bCreated; }

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    CSafeFunction<QWidget*()> m_fnCreator;
    CreateMode m_enMode = CreateOnShow;
    bool m_bCreated = false;
};

}  // namespace pattern
}  // namespace core
