// The message recorder and the guards against unexpected message boxes.
#include "ZvTestSupport.h"

#include <gtest/gtest.h>

namespace zv::test {

TZvMessageRecorder::TZvMessageRecorder(QMessageBox::StandardButton FirstAnswer) : Answer(FirstAnswer) {
    PreviousConfirm = SetConfirmHandler([this](QWidget* Parent, const QString& Caption, const QString& Text) {
        Questions.push_back({Parent, Caption, Text});
        return this->Answer;
    });
    PreviousError = SetErrorHandler([this](QWidget* Parent, const QString& Message) {
        Errors.push_back({Parent, Message});
    });
}

TZvMessageRecorder::~TZvMessageRecorder() {
    SetConfirmHandler(std::move(PreviousConfirm));
    SetErrorHandler(std::move(PreviousError));
}

void InstallUnexpectedMessageGuards() {
    SetConfirmHandler([](QWidget*, const QString& Caption, const QString& Text) {
        ADD_FAILURE() << "unexpected question \"" << Caption.toStdString() << "\": " << Text.toStdString();
        return QMessageBox::No;
    });
    SetErrorHandler([](QWidget*, const QString& Message) {
        ADD_FAILURE() << "unexpected error message: " << Message.toStdString();
    });
}

} // namespace zv::test
