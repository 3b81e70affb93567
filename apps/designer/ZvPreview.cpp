// The preview thread and its reader.
#include "ZvPreview.h"

#include <QAtomicInteger>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

#include <limits>

namespace zv {
namespace {

// Each reader has a connection name of its own, since connection names are process-wide.
QString NextConnectionName() {
    static QAtomicInteger<quint32> Counter;
    return QStringLiteral("zevrin-preview-%1").arg(++Counter);
}

} // namespace

TZvPreviewWorker::TZvPreviewWorker(TZvConnectionInfo Info_, int RowLimit_,
                                   std::shared_ptr<const std::atomic<quint64>> Latest_)
    : Info(std::move(Info_)), RowLimit(RowLimit_), Latest(std::move(Latest_)),
      ConnectionName(NextConnectionName()) {}

bool TZvPreviewWorker::EnsureOpen(QString& Error) {
    if (Opened)
        return true;
    QSqlDatabase Database = ZvOpenConnection(Info, ConnectionName, &Error);
    Opened = Database.isOpen();
    return Opened;
}

void TZvPreviewWorker::Run(quint64 Request, const QString& Sql) {
    if (IsReplaced(Request))
        return;
    TZvPreviewResult Result;
    Result.Request = Request;
    if (!EnsureOpen(Result.Error)) {
        emit Finished(Result);
        return;
    }
    QSqlQuery Query(QSqlDatabase::database(ConnectionName, false));
    // Forward only: SQLite steps row by row and PostgreSQL's driver reads single rows, so the
    // rows past the limit are never fetched.
    Query.setForwardOnly(true);
    if (!Query.exec(Sql)) {
        Result.Error = Query.lastError().text();
        emit Finished(Result);
        return;
    }
    const QSqlRecord Record = Query.record();
    for (int I = 0; I < Record.count(); ++I)
        Result.Columns << Record.fieldName(I);
    while (Query.next()) {
        if (IsReplaced(Request))
            return;
        if (Result.Rows.size() == RowLimit) {
            Result.More = true;
            break;
        }
        QVariantList Row;
        Row.reserve(Record.count());
        for (int I = 0; I < Record.count(); ++I)
            Row << Query.value(I);
        Result.Rows << Row;
    }
    emit Finished(Result);
}

void TZvPreviewWorker::Shutdown() {
    if (QSqlDatabase::contains(ConnectionName))
        ZvCloseConnection(ConnectionName);
    Opened = false;
}

TZvPreview::TZvPreview(const TZvConnectionInfo& Info, int RowLimit, QObject* Parent)
    : QObject(Parent), Worker(new TZvPreviewWorker(Info, RowLimit, Latest)) {
    qRegisterMetaType<TZvPreviewResult>();
    Thread.setObjectName(QStringLiteral("zevrin-preview"));
    Worker->moveToThread(&Thread);
    connect(Worker, &TZvPreviewWorker::Finished, this, &TZvPreview::Receive, Qt::QueuedConnection);
    Thread.start();
}

TZvPreview::~TZvPreview() {
    // Every request becomes stale, so a fetch in progress stops at its next row.
    Latest->store(std::numeric_limits<quint64>::max());
    QMetaObject::invokeMethod(Worker, &TZvPreviewWorker::Shutdown, Qt::BlockingQueuedConnection);
    Thread.quit();
    Thread.wait();
    delete Worker;
}

quint64 TZvPreview::Run(const QString& Sql) {
    const quint64 Request = Latest->load() + 1;
    Latest->store(Request);
    Busy = true;
    QMetaObject::invokeMethod(
        Worker, [Target = Worker, Request, Sql] { Target->Run(Request, Sql); }, Qt::QueuedConnection);
    return Request;
}

void TZvPreview::Cancel() {
    Latest->store(Latest->load() + 1);
    Busy = false;
}

void TZvPreview::Receive(const TZvPreviewResult& Result) {
    if (Result.Request != Latest->load())
        return;
    Busy = false;
    emit Finished(Result);
}

} // namespace zv
