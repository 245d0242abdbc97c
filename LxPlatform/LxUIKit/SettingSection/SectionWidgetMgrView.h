#pragma once
// CSectionWidgetMgrView: the vertical stack of a settings page. Sections (rows or layouts) are
// added in order, each followed by a gap of the pixels given. One section may be the header; it is
// simply the first one added through SetHeaderSection (nothing moves it to the top), and a second
// header is refused with an assertion. The lists keep insertion order and own nothing (the layout
// and the Qt parents do).

#include <LxUIKit/LxUIKitExport.h>

#include <QVector>
#include <QWidget>

class QLayout;
class QVBoxLayout;

class LXUIKIT_EXPORT CSectionWidgetMgrView : public QWidget {
    Q_OBJECT
public:
    explicit CSectionWidgetMgrView(QWidget* parent = nullptr);

    void AddSectionWidget(QWidget* pSection, int spacingAfter);
    void AddSectionLayout(QLayout* pSection, int spacingAfter);
    void SetHeaderSection(QWidget* pSection, int spacingAfter);
    void SetHeaderSection(QLayout* pSection, int spacingAfter);
    void AddBodySection(QWidget* pSection, int spacingAfter) { AddSectionWidget(pSection, spacingAfter); }
    void AddBodySection(QLayout* pSection, int spacingAfter) { AddSectionLayout(pSection, spacingAfter); }

    QObject* GetHeaderSection() const { return m_pHeader; }
    const QVector<QWidget*>& GetSectionWidgets() const { return m_vecWidgets; }
    const QVector<QLayout*>& GetSectionLayouts() const { return m_vecLayouts; }
    QVBoxLayout* GetMainLayout() const { return m_pLayout; }

private:
    QObject* m_pHeader = nullptr;
    QVBoxLayout* m_pLayout = nullptr;
    QVector<QWidget*> m_vecWidgets;
    QVector<QLayout*> m_vecLayouts;
};
