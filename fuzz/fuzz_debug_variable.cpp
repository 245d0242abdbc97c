// Text typed into the inspector's property editor, and style sheets read back by the inspector:
// the first byte picks the target type (or an enum), the rest is the text. The text is also set as
// a widget's style sheet and its applying rules are listed. Nothing may crash or be undefined.

#include "FuzzApp.h"

#include <LxStdUI/LStyleSheetStyleHelper.h>
#include <LxUIKit/DevTools/Spy/LxDebugVariableParser_p.h>

#include <QPushButton>
#include <QSizePolicy>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    lx_fuzz::App();
    if (size == 0)
        return 0;
    static const int kTypes[] = {QMetaType::Bool,   QMetaType::Int,     QMetaType::UInt,   QMetaType::LongLong,
                                 QMetaType::Double, QMetaType::QString, QMetaType::QColor, QMetaType::QSize,
                                 QMetaType::QPoint, QMetaType::QRect,   QMetaType::QFont,  QMetaType::QVariantMap};
    const uint8_t selector = data[0];
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data + 1), int(size - 1));
    QVariant out;
    QString error;
    if (selector & 0x80) {
        const QMetaEnum e = QMetaEnum::fromType<QSizePolicy::Policy>();
        if (devtools::spy::ParseDebugVariable(text, QMetaType::Int, &out, &error, e))
            (void)devtools::spy::DebugVariableText(out, e);
    } else {
        const int type = kTypes[selector % (sizeof(kTypes) / sizeof(kTypes[0]))];
        if (devtools::spy::ParseDebugVariable(text, type, &out, &error))
            (void)devtools::spy::DebugVariableText(out);
    }
    if (size < 4096) {
        QWidget panel;
        panel.setObjectName(QStringLiteral("panel"));
        auto* button = new QPushButton(&panel);
        button->setObjectName(QStringLiteral("buy"));
        button->setProperty("role", QStringLiteral("primary"));
        panel.setStyleSheet(text);
        (void)LStyleSheetStyleHelper::objectStyleRulesHtmlString(button);
    }
    return 0;
}
