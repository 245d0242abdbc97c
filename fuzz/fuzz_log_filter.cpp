// The log viewer's filter from untrusted patterns and lines: the first byte chooses a regular
// expression (odd) or plain text (even); then the pattern, the message and the location, separated
// by newlines. One viewer serves every run, so a pattern cached from an earlier run must never
// leak into the next. The answer must be the documented one: a regular expression matches when
// it is found past the first character of the message or of the location (an invalid one never
// matches); plain text matches anywhere, ignoring case. Typing a hostile pattern must neither
// crash the viewer nor stall it (libFuzzer's timeout catches a pattern whose matching explodes).

#include "FuzzApp.h"

#include <LxUIKit/DevTools/Log/LogViewerWnd.h>

#include <QCheckBox>
#include <QComboBox>
#include <QRegExp>

#include <cstdint>
#include <cstdlib>

namespace {

struct Viewer {
    CLogViewerWnd wnd;
    QComboBox* pFilter = nullptr;
    QCheckBox* pRegExp = nullptr;
    Viewer() {
        pFilter = wnd.findChild<QComboBox*>();
        for (QCheckBox* box : wnd.findChildren<QCheckBox*>()) {
            if (box->text() == QStringLiteral("正则表达式"))
                pRegExp = box;
        }
        if (!pFilter || !pRegExp)
            abort();  // the viewer lost its filter controls
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    lx_fuzz::App();
    static Viewer* s_pViewer = new Viewer;
    if (size == 0)
        return 0;
    const bool bRegExp = data[0] & 1;
    const QStringList parts =
        QString::fromUtf8(reinterpret_cast<const char*>(data + 1), int(size - 1)).split(QLatin1Char('\n'));
    CLogViewerWnd::ItemData item;
    item.strMessage = parts.value(1);
    item.strLocation = parts.value(2);
    const QString pattern = parts.value(0);

    s_pViewer->pRegExp->setChecked(bRegExp);
    s_pViewer->pFilter->setEditText(pattern);
    s_pViewer->wnd.UpdateAllFilterFlags();
    if (s_pViewer->wnd.FilterText() != pattern)
        abort();
    const bool bMatched = s_pViewer->wnd.IsTextMatchFilter(item);

    bool bExpected;
    if (bRegExp) {
        QRegExp rx(pattern);
        bExpected = rx.isValid() && (rx.indexIn(item.strMessage) > 0 || rx.indexIn(item.strLocation) > 0);
    } else {
        bExpected = item.strMessage.contains(pattern, Qt::CaseInsensitive) ||
                    item.strLocation.contains(pattern, Qt::CaseInsensitive);
    }
    if (bMatched != bExpected)
        abort();
    return 0;
}
