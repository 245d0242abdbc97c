#pragma once
// LxCardCreatePerformanceHelper: how long the host's content cards take to build and how many
// widgets each build makes, averaged per card kind and shown in a table window ("Card Create
// Performance Info"). The host reports each build right after constructing the card, with the
// time it measured around the construction.
//
// Widget counting walks the card's descendants (the card itself is not counted): every widget
// counts once in the total; it counts as visible only when neither it nor any ancestor below the
// card is hidden.

#include <LxUIKit/LxUIKitExport.h>

#include <QMap>
#include <QPointer>
#include <QString>

class QTableView;
class QWidget;

class LXUIKIT_EXPORT LxCardCreatePerformanceHelper {
public:
    struct PerformanceInfo {
        int i32Reports = 0;
        qint64 i64TotalTimeMs = 0;
        qint64 i64TotalCreated = 0;
        qint64 i64TotalVisible = 0;
    };

    static LxCardCreatePerformanceHelper* instance();
    static LxCardCreatePerformanceHelper* instancePtr() { return instance(); }

    // A null card asserts and records nothing. The key is "<kind>-<name>".
    void ReportCardCreatePerformanceInfo(QWidget* card, const QString& kind, const QString& name, qint64 elapsedMs);
    // Closes a table window still open and opens a new one.
    void ShowCreatePerformanceInfoWindow();
    QTableView* Window() const;

    const QMap<QString, PerformanceInfo>& Infos() const { return m_mapInfos; }
    void Clear();

    // Adds the descendants of `widget` to *total, and those not hidden to *visible when given.
    static void GetChildrenCount(QWidget* widget, int* total, int* visible);

private:
    LxCardCreatePerformanceHelper() = default;
    QMap<QString, PerformanceInfo> m_mapInfos;
    QPointer<QTableView> m_pWindow;
};
