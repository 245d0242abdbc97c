#pragma once
// Kit helpers for the host: the core's start-up parameters and the one-call toast.
//
// Toasts appear on the primary screen (on a multi-screen desktop the virtual desktop's middle can
// fall between two screens). A toast of more than one second slides up from the bottom edge and
// ends 50 pixels above it; shorter ones appear a little below the middle of the screen.
//
// Toast types: Info is the neutral toast (the text alone on dark grey), Success carries a check
// mark on green, Warning an exclamation sign on amber with dark text, Error a cross on red. Every
// toast label is a parentless tool-tip window named "LxSimpleToast".

#include <LxCore/CoreInit.h>
#include <LxCore/TriBool.h>
#include <LxUIKit/LxUIKitExport.h>

#include <QString>

namespace gui {

// The host calls this first of all, before its core initialises, and hands the result to
// core::InitCore: archive functions and the scheme-URL load-failure handler.
LXUIKIT_EXPORT core::CoreInitParam GetCoreInitParamVeryFirst();

enum class LxToastType : int { Info = 0, Success = 1, Warning = 2, Error = 3 };

// Shows a toast and returns at once; it deletes itself after durationMs.
LXUIKIT_EXPORT void ShowSimpleToast(QString text, TriBool state, int durationMs);
LXUIKIT_EXPORT void ShowToast(const QString& text, LxToastType type, int durationMs = 2000);

}  // namespace gui
