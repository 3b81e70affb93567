// The two ways in which every widget talks to the user directly: the Yes/No confirmation before a
// destructive operation, and the error display for a failure inside a user action. Each goes through
// one replaceable handler, so that an application can restyle them and a test can answer and record
// without a modal box ever waiting.
#pragma once

#include <QMessageBox>
#include <QString>

#include <exception>
#include <functional>
#include <utility>

class QWidget;

namespace zv {

// Asks a Yes/No question with the question icon. Returns the button the user chose (or the
// handler's answer); callers go ahead on any answer but QMessageBox::No, so closing the box
// counts as consent, as the design wants.
using TZvConfirmHandler =
    std::function<QMessageBox::StandardButton(QWidget* Parent, const QString& Caption, const QString& Text)>;
// Shows an error message.
using TZvErrorHandler = std::function<void(QWidget* Parent, const QString& Message)>;

QMessageBox::StandardButton ZvAskYesNo(QWidget* Parent, const QString& Caption, const QString& Text);
// True unless the answer was No.
bool ZvConfirm(QWidget* Parent, const QString& Caption, const QString& Text);
void ZvShowError(QWidget* Parent, const QString& Message);

// Install a handler; an empty function restores the message box. Each returns the handler that
// was installed before (empty for the message box), so a scoped replacement can put it back.
TZvConfirmHandler SetConfirmHandler(TZvConfirmHandler Handler);
TZvErrorHandler SetErrorHandler(TZvErrorHandler Handler);

// Shows the message of an exception through the error display; unknown exceptions get a generic
// text. Meant for the catch block at the edge of a user action.
void ZvShowException(QWidget* Parent, std::exception_ptr Error);

// Runs Action; an exception it raises is shown through the error display instead of unwinding
// into Qt's event dispatch. Returns true when Action finished normally.
template <class TAction>
bool ZvRunGuarded(QWidget* Parent, TAction&& Action) {
    try {
        std::forward<TAction>(Action)();
        return true;
    } catch (...) {
        ZvShowException(Parent, std::current_exception());
        return false;
    }
}

} // namespace zv
