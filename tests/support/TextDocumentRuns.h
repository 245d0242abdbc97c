#pragma once
// A text document as runs of text with one character format each, for comparing two documents
// built different ways (used by the tests and the fuzz targets). Object indices are left out: each
// document numbers its own objects.

#include <QDebug>
#include <QMap>
#include <QStringList>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFragment>

namespace lxtest {

inline QStringList FormatRuns(QTextDocument* doc) {
    QStringList out;
    QString last;
    for (QTextBlock b = doc->begin(); b.isValid(); b = b.next())
        for (auto it = b.begin(); !it.atEnd(); ++it) {
            QMap<int, QVariant> props = it.fragment().charFormat().properties();
            props.remove(QTextFormat::ObjectIndex);
            QString format;
            QDebug(&format) << props;
            if (format == last && !out.isEmpty()) {
                out.last() += it.fragment().text();
            } else {
                out << format + QLatin1Char('|') + it.fragment().text();
                last = format;
            }
        }
    return out;
}

}  // namespace lxtest
