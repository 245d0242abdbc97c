#pragma once
// GalleryTrace: with `--trace FILE` the gallery appends one line per observable fact to FILE, so a
// script driving the gallery from outside (real mouse and keys) can wait for what it caused, and a
// developer can see what happened in what order. Nothing the gallery does changes: the trace only
// watches (an application event filter, the buttons' clicked signals, the inspector's broadcasts
// and a 100 ms look at the tool windows' state).
//
// Each line is a kind followed by key=value pairs; a value with spaces or quotes is written in
// double quotes with \" \\ \n escapes. Coordinates are global, in device-independent pixels.
//   window state=shown class=C name=N title="T" modal=none|window|application wid=W x= y= w= h= lines=L
//       written when a window is shown, moved or resized (once things settle, 50 ms later) and
//       followed by its map, L lines: one per visible widget inside it and per visible view row
//   window state=hidden class=C name=N title="T"
//   widget window=N class=C name=N text="T" x= y= w= h=
//   item view=N row=R text="T" x= y= w= h=       the visible rows of a list, table or tree view
//   page name=N state=shown|hidden                a gallery page painted (it or a child of it) after
//                                                 it became current, and hidden again
//   button name=N text="T" count=K                a button's clicked signal; K counts that button's clicks
//   viewer visible=0|1 lines=N total=M mask=0x.. filter="T"   the developer tools' log list
//   preview visible=0|1 index=I count=N scale=S status=Status_Loading|Status_Loaded|...
//                                                 the image preview window
//   spy picking=on|off                            the widget inspector's picking mode
//   spy hovered class=C name=N                    the item under the mouse while picking
//   spy selected class=C name=N text="T"          an item picked with the inspector
//
// Choices made here:
// - Windows that are popups or tool tips (menus, drop-down lists, toasts' tips) are not reported.
// - The rows of item views are listed (at most 100 per view), not the widgets inside them.
// - A window shown and hidden again before its map is written is reported as neither.
// - The file is flushed after every line, so a reader polling it never waits for a buffer.

#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>

#include <QFile>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QTimer>

class QWidget;

class GalleryTrace : public QObject, public ILxUISpyComponent {
public:
    // Starts tracing into path (appending); false when the file cannot be opened. Once per process.
    static bool Start(const QString& path);

    bool eventFilter(QObject* obj, QEvent* ev) override;

protected:
    void OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool clicked) override;
    void OnHoveredPseudoWidgetChanged(const PseudoWidget& pw, HoverSource source) override;
    void OnConfigChanged(const Config& previous, const Config& current) override;

private:
    explicit GalleryTrace(QObject* parent);
    void Write(const QString& line);
    void Watch(QWidget* w);
    void ScheduleMap(QWidget* window);
    void WriteMaps();
    void WriteMap(QWidget* window);
    void WatchButton(QObject* button);
    void Poll();

    QFile m_file;
    QTimer m_mapTimer;
    QTimer m_pollTimer;
    QSet<QWidget*> m_setPendingMaps;      // windows to map at the next timer shot
    QSet<QWidget*> m_setReportedWindows;  // windows reported as shown and not hidden since
    QSet<QWidget*> m_setWatched;          // widgets whose destruction clears them from the sets below
    QSet<QWidget*> m_setAwaitingPaint;    // pages shown but not painted yet
    QSet<QWidget*> m_setShownPages;
    QHash<QObject*, int> m_hashClicks;
    QString m_strViewerState;
    QString m_strPreviewState;
};
