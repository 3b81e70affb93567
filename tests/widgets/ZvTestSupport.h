// Shared helpers of the widget tests: a recorder that answers the component's questions and
// collects its error messages, so that no modal box ever waits in a headless run.
#pragma once

#include "ZvMessages.h"
#include "ZvTypes.h"

#include <QString>

#include <ostream>
#include <vector>

class QWidget;

namespace zv {

// Field types print as numbers in test failures (the enum's byte would print as a character).
inline void PrintTo(TFieldType Type, std::ostream* Out) {
    *Out << "TFieldType(" << static_cast<int>(Type) << ")";
}

} // namespace zv

namespace zv::test {

// Installs itself as the confirmation and the error display for its lifetime and puts back what
// was installed before when it goes.
class TZvMessageRecorder {
public:
    struct TQuestion {
        QWidget* Parent;
        QString Caption;
        QString Text;
    };
    struct TError {
        QWidget* Parent;
        QString Message;
    };

    explicit TZvMessageRecorder(QMessageBox::StandardButton FirstAnswer = QMessageBox::Yes);
    ~TZvMessageRecorder();
    TZvMessageRecorder(const TZvMessageRecorder&) = delete;
    TZvMessageRecorder& operator=(const TZvMessageRecorder&) = delete;

    // The answer given to every following question.
    void SetAnswer(QMessageBox::StandardButton Value) { Answer = Value; }

    std::vector<TQuestion> Questions;
    std::vector<TError> Errors;

private:
    QMessageBox::StandardButton Answer;
    TZvConfirmHandler PreviousConfirm;
    TZvErrorHandler PreviousError;
};

// Installs handlers that fail the running test when the component asks or reports anything
// without a recorder in place. The test main calls it once.
void InstallUnexpectedMessageGuards();

} // namespace zv::test
