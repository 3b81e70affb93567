// The default confirmation and error display (modal message boxes) and the slots holding their
// replacements.
#include "ZvMessages.h"

#include "ZvResource.h"

#include <QApplication>

#include <stdexcept>
#include <utility>

namespace zv {
namespace {

// The widgets run on the user-interface thread only, so plain statics need no lock.
TZvConfirmHandler& ConfirmHandler() {
    static TZvConfirmHandler Handler;
    return Handler;
}

TZvErrorHandler& ErrorHandler() {
    static TZvErrorHandler Handler;
    return Handler;
}

QString ErrorCaption() {
    const QString Name = QApplication::applicationDisplayName();
    return Name.isEmpty() ? QApplication::applicationName() : Name;
}

} // namespace

QMessageBox::StandardButton ZvAskYesNo(QWidget* Parent, const QString& Caption, const QString& Text) {
    if (ConfirmHandler()) {
        return ConfirmHandler()(Parent, Caption, Text);
    }
    return QMessageBox::question(Parent, Caption, Text, QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
}

bool ZvConfirm(QWidget* Parent, const QString& Caption, const QString& Text) {
    return ZvAskYesNo(Parent, Caption, Text) != QMessageBox::No;
}

void ZvShowError(QWidget* Parent, const QString& Message) {
    if (ErrorHandler()) {
        ErrorHandler()(Parent, Message);
        return;
    }
    QMessageBox::critical(Parent, ErrorCaption(), Message);
}

TZvConfirmHandler SetConfirmHandler(TZvConfirmHandler Handler) {
    return std::exchange(ConfirmHandler(), std::move(Handler));
}

TZvErrorHandler SetErrorHandler(TZvErrorHandler Handler) {
    return std::exchange(ErrorHandler(), std::move(Handler));
}

void ZvShowException(QWidget* Parent, std::exception_ptr Error) {
    try {
        std::rethrow_exception(std::move(Error));
    } catch (const std::exception& E) {
        ZvShowError(Parent, QString::fromUtf8(E.what()));
    } catch (...) {
        ZvShowError(Parent, ZvText(TZvRes::UnknownError));
    }
}

} // namespace zv
