#include "GalleryTrace.h"

#include <LxUIKit/DevTools/Log/LogViewerWnd.h>
#include <LxUIKit/ImagePreview/LxImagePreviewContentWidget.h>
#include <LxUIKit/ImagePreview/LxImagePreviewWnd.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMetaEnum>
#include <QWidget>

#include <cstdio>

namespace {

constexpr int kMapDelayMs = 50;
constexpr int kPollMs = 100;
constexpr int kMaxRows = 100;
constexpr int kMaxWidgetsPerWindow = 3000;
const char kPagePrefix[] = "GalleryPage_";

QPointer<GalleryTrace> g_trace;
QPointer<CLxImagePreviewWnd> g_preview;  // seen shown at least once; never created by the trace

// A value as written in a line: bare when it is a plain word, otherwise quoted and escaped.
QString Value(const QString& v) {
    bool bPlain = !v.isEmpty();
    for (const QChar c : v)
        bPlain = bPlain && !c.isSpace() && c != QLatin1Char('"') && c != QLatin1Char('\\') && c != QLatin1Char('=');
    if (bPlain)
        return v;
    QString out = QStringLiteral("\"");
    for (const QChar c : v) {
        if (c == QLatin1Char('"') || c == QLatin1Char('\\'))
            out += QLatin1Char('\\');
        if (c == QLatin1Char('\n'))
            out += QLatin1String("\\n");
        else if (c == QLatin1Char('\r'))
            out += QLatin1String("\\r");
        else
            out += c;
    }
    return out + QLatin1Char('"');
}

// " key=value", the value written as Value() does.
QString KV(const char* key, const QString& value) {
    return QLatin1Char(' ') + QLatin1String(key) + QLatin1Char('=') + Value(value);
}
QString KV(const char* key, qlonglong value) { return KV(key, QString::number(value)); }

QString Rect(const QWidget* w, const QRect& local) {
    const QPoint at = w->mapToGlobal(local.topLeft());
    return KV("x", at.x()) + KV("y", at.y()) + KV("w", local.width()) + KV("h", local.height());
}

QString ClassOf(const QObject* o) { return QString::fromLatin1(o->metaObject()->className()); }

QString WindowName(const QWidget* w) {
    return w->objectName().isEmpty() ? QString::fromLatin1(w->metaObject()->className()) : w->objectName();
}

// What a user reads on a widget, when it has one short text.
QString TextOf(const QWidget* w) {
    if (auto* b = qobject_cast<const QAbstractButton*>(w))
        return b->text();
    if (auto* l = qobject_cast<const QLabel*>(w))
        return l->text().left(80);
    if (auto* c = qobject_cast<const QComboBox*>(w))
        return c->currentText();
    if (auto* e = qobject_cast<const QLineEdit*>(w))
        return e->text();
    return QString();
}

bool IsReportedWindow(const QWidget* w) {
    if (!w->isWindow())
        return false;
    const Qt::WindowType type = w->windowType();
    return type != Qt::Popup && type != Qt::ToolTip && type != Qt::Desktop;
}

const char* Modality(const QWidget* w) {
    switch (w->windowModality()) {
    case Qt::ApplicationModal: return "application";
    case Qt::WindowModal: return "window";
    default: return "none";
    }
}

}  // namespace

bool GalleryTrace::Start(const QString& path) {
    if (g_trace)
        return false;
    auto* trace = new GalleryTrace(qApp);
    trace->m_file.setFileName(path);
    if (!trace->m_file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text)) {
        std::fprintf(stderr, "cannot write the trace file %s\n", qPrintable(path));
        delete trace;
        return false;
    }
    g_trace = trace;
    qApp->installEventFilter(trace);
    trace->m_pollTimer.start();
    return true;
}

GalleryTrace::GalleryTrace(QObject* parent) : QObject(parent) {
    m_mapTimer.setSingleShot(true);
    m_mapTimer.setInterval(kMapDelayMs);
    connect(&m_mapTimer, &QTimer::timeout, this, &GalleryTrace::WriteMaps);
    m_pollTimer.setInterval(kPollMs);
    connect(&m_pollTimer, &QTimer::timeout, this, &GalleryTrace::Poll);
}

void GalleryTrace::Write(const QString& line) {
    m_file.write(line.toUtf8());
    m_file.write("\n", 1);
    m_file.flush();
}

bool GalleryTrace::eventFilter(QObject* obj, QEvent* ev) {
    if (!obj->isWidgetType())
        return false;
    auto* w = static_cast<QWidget*>(obj);
    switch (ev->type()) {
    case QEvent::Polish:
        if (qobject_cast<QAbstractButton*>(obj))
            WatchButton(obj);
        break;
    case QEvent::Show:
        if (w->objectName().startsWith(QLatin1String(kPagePrefix)) && !m_setShownPages.contains(w)) {
            m_setAwaitingPaint.insert(w);
            Watch(w);
        }
        if (IsReportedWindow(w)) {
            if (auto* preview = qobject_cast<CLxImagePreviewWnd*>(w))
                g_preview = preview;
            ScheduleMap(w);
        }
        break;
    case QEvent::Move:
    case QEvent::Resize:
        if (IsReportedWindow(w) && w->isVisible())
            ScheduleMap(w);
        break;
    case QEvent::Hide:
        if (IsReportedWindow(w) && m_setReportedWindows.remove(w))
            Write(QStringLiteral("window state=hidden") + KV("class", ClassOf(w)) + KV("name", WindowName(w)) +
                  KV("title", w->windowTitle()));
        m_setAwaitingPaint.remove(w);
        if (m_setShownPages.remove(w))
            Write(QStringLiteral("page") + KV("name", w->objectName().mid(int(sizeof(kPagePrefix)) - 1)) +
                  QStringLiteral(" state=hidden"));
        break;
    case QEvent::Paint:
        // A page counts as shown once something in it has really been painted after it became
        // current (the page itself may be covered by its children and never paint).
        if (!m_setAwaitingPaint.isEmpty()) {
            for (QWidget* p = w; p; p = p->parentWidget()) {
                if (m_setAwaitingPaint.remove(p)) {
                    m_setShownPages.insert(p);
                    Write(QStringLiteral("page") + KV("name", p->objectName().mid(int(sizeof(kPagePrefix)) - 1)) +
                          QStringLiteral(" state=shown"));
                    ScheduleMap(p->window());
                    break;
                }
            }
        }
        break;
    default: break;
    }
    return false;
}

void GalleryTrace::WatchButton(QObject* button) {
    if (m_hashClicks.contains(button))
        return;
    m_hashClicks.insert(button, 0);
    auto* b = static_cast<QAbstractButton*>(button);
    connect(b, &QAbstractButton::clicked, this, [this, b] {
        const int n = ++m_hashClicks[b];
        Write(QStringLiteral("button") + KV("name", b->objectName().isEmpty() ? ClassOf(b) : b->objectName()) +
              KV("text", b->text()) + KV("count", n));
    });
    connect(b, &QObject::destroyed, this, [this, button] { m_hashClicks.remove(button); });
}

// The sets hold plain pointers: a widget leaves them all when it goes.
void GalleryTrace::Watch(QWidget* w) {
    if (m_setWatched.contains(w))
        return;
    m_setWatched.insert(w);
    connect(w, &QObject::destroyed, this, [this, w] {
        m_setWatched.remove(w);
        m_setPendingMaps.remove(w);
        m_setReportedWindows.remove(w);
        m_setAwaitingPaint.remove(w);
        m_setShownPages.remove(w);
    });
}

void GalleryTrace::ScheduleMap(QWidget* window) {
    m_setPendingMaps.insert(window);
    Watch(window);
    m_mapTimer.start();
}

void GalleryTrace::WriteMaps() {
    const QSet<QWidget*> pending = std::move(m_setPendingMaps);
    m_setPendingMaps.clear();
    for (QWidget* w : pending)
        if (w->isVisible())
            WriteMap(w);
}

void GalleryTrace::WriteMap(QWidget* window) {
    m_setReportedWindows.insert(window);
    const QString name = WindowName(window);
    QStringList lines;
    lines << QString();  // the window's own line, once its widgets are counted
    // Depth first, in the order the children were made; the rows of views instead of their parts.
    QVector<QWidget*> stack;
    const QList<QWidget*> top = window->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (auto it = top.crbegin(); it != top.crend(); ++it)
        stack.push_back(*it);
    int count = 0;
    while (!stack.isEmpty() && count < kMaxWidgetsPerWindow) {
        QWidget* w = stack.takeLast();
        if (w->isWindow() || !w->isVisible())
            continue;
        ++count;
        lines << QStringLiteral("widget") + KV("window", name) + KV("class", ClassOf(w)) + KV("name", w->objectName()) +
                     KV("text", TextOf(w)) + Rect(w, w->rect());
        if (auto* view = qobject_cast<QAbstractItemView*>(w)) {
            QAbstractItemModel* model = view->model();
            const QRect visible = view->viewport()->rect();
            for (int row = 0, listed = 0; model && row < model->rowCount() && listed < kMaxRows; ++row) {
                const QModelIndex index = model->index(row, 0);
                const QRect r = view->visualRect(index).intersected(visible);
                if (r.isEmpty())
                    continue;
                ++listed;
                lines << QStringLiteral("item") + KV("view", w->objectName().isEmpty() ? ClassOf(w) : w->objectName()) +
                             KV("row", row) + KV("text", index.data().toString().left(80)) + Rect(view->viewport(), r);
            }
            continue;
        }
        const QList<QWidget*> children = w->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        for (auto it = children.crbegin(); it != children.crend(); ++it)
            stack.push_back(*it);
    }
    lines[0] = QStringLiteral("window state=shown") + KV("class", ClassOf(window)) + KV("name", name) +
               KV("title", window->windowTitle()) + KV("modal", QLatin1String(Modality(window))) +
               KV("wid", qlonglong(window->winId())) + Rect(window, window->rect()) + KV("lines", lines.size() - 1);
    Write(lines.join(QLatin1Char('\n')));
}

void GalleryTrace::Poll() {
    QString viewer = QStringLiteral("viewer visible=0");
    if (CLogViewerWnd* wnd = CLogViewerWnd::Instance()) {
        int shown = 0;
        for (const CLogViewerWnd::ItemData& item : wnd->Lines())
            shown += item.bShown ? 1 : 0;
        viewer = QStringLiteral("viewer") + KV("visible", wnd->isVisible() ? 1 : 0) + KV("lines", shown) +
                 KV("total", wnd->Lines().size()) +
                 KV("mask", QStringLiteral("0x") + QString::number(wnd->FilterMask(), 16)) +
                 KV("filter", wnd->FilterText());
    }
    if (viewer != m_strViewerState) {
        m_strViewerState = viewer;
        Write(viewer);
    }

    QString preview = QStringLiteral("preview visible=0");
    if (g_preview && g_preview->isVisible()) {
        const auto info = g_preview->GetCurrentImageInfo();
        preview = QStringLiteral("preview visible=1") + KV("index", g_preview->GetCurrentIndex()) +
                  KV("count", g_preview->GetImageCount()) +
                  KV("scale", QString::number(info ? info->dScale : 0.0, 'f', 2));
        if (CLxImagePreviewContentWidget* content = g_preview->GetContentWidget())
            preview +=
                KV("status",
                   QString::fromLatin1(QMetaEnum::fromType<CLxImagePreviewContentWidget::ImageStatus>().valueToKey(
                       content->GetCurrentImageStatus())));
    }
    if (preview != m_strPreviewState) {
        m_strPreviewState = preview;
        Write(preview);
    }
}

void GalleryTrace::OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool clicked) {
    if (!clicked)
        return;
    Write(QStringLiteral("spy selected") + KV("class", pw.className()) + KV("name", pw.objectName()) +
          KV("text", pw.text().left(80)));
}

void GalleryTrace::OnHoveredPseudoWidgetChanged(const PseudoWidget& pw, HoverSource) {
    Write(QStringLiteral("spy hovered") + KV("class", pw.className()) + KV("name", pw.objectName()));
}

void GalleryTrace::OnConfigChanged(const Config& previous, const Config& current) {
    if (previous.picking != current.picking)
        Write(QStringLiteral("spy picking=") + (current.picking ? QLatin1String("on") : QLatin1String("off")));
}
