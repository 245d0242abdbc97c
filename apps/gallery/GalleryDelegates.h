#pragma once
// The gallery's host delegates: reports as JSON lines in the log folder, web pages in the desktop
// browser, the remote-debug port in the log.

#include <QString>

void InstallGalleryDelegates();
QString GalleryReportFilePath();
