// The result preview: runs a statement on a connection of its own in a thread of its own and hands
// back its first rows, so that a slow query never freezes the window. The designer component
// itself stays single-threaded; only this reader leaves the user-interface thread.
#pragma once

#include "ZvConnection.h"

#include <QList>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QThread>
#include <QVariant>

#include <atomic>
#include <memory>

namespace zv {

// How many rows a preview fetches at most; the reader stops there and says that there are more.
constexpr int kZvPreviewRowLimit = 200;

struct TZvPreviewResult {
    quint64 Request = 0;
    QStringList Columns;
    QList<QVariantList> Rows;
    bool More = false; // the statement returns rows beyond the limit
    QString Error;     // the database's message when the statement failed; empty on success
};

// Lives in the preview thread: opens its connection on first use and reads one statement per
// request. A request that a newer one has replaced is skipped, and a fetch stops as soon as it is
// replaced, so that only the latest statement costs time.
class TZvPreviewWorker : public QObject {
    Q_OBJECT

public:
    TZvPreviewWorker(TZvConnectionInfo Info, int RowLimit,
                     std::shared_ptr<const std::atomic<quint64>> Latest);

public slots:
    void Run(quint64 Request, const QString& Sql);
    // Closes the connection; runs in the preview thread before it ends.
    void Shutdown();

signals:
    void Finished(const zv::TZvPreviewResult& Result);

private:
    bool EnsureOpen(QString& Error);
    bool IsReplaced(quint64 Request) const { return Latest->load() != Request; }

    TZvConnectionInfo Info;
    int RowLimit;
    std::shared_ptr<const std::atomic<quint64>> Latest;
    QString ConnectionName;
    bool Opened = false;
};

// Owned by the window: starts the preview thread and sends it statements. Finished is emitted in
// the owner's thread for the latest request only.
class TZvPreview : public QObject {
    Q_OBJECT

public:
    explicit TZvPreview(const TZvConnectionInfo& Info, int RowLimit = kZvPreviewRowLimit,
                        QObject* Parent = nullptr);
    // Stops the thread; waits for a statement being read to return its current row.
    ~TZvPreview() override;
    TZvPreview(const TZvPreview&) = delete;
    TZvPreview& operator=(const TZvPreview&) = delete;

    // Reads Sql in the preview thread; returns the request's number. A request still waiting or
    // running is replaced.
    quint64 Run(const QString& Sql);
    // Forgets the request in progress: its result is not reported.
    void Cancel();
    // True while the latest request has not reported.
    bool IsBusy() const { return Busy; }
    const QThread* WorkerThread() const { return &Thread; }

signals:
    void Finished(const zv::TZvPreviewResult& Result);

private:
    void Receive(const TZvPreviewResult& Result);

    // The number of the latest request, shared with the worker (declared before it, which is made
    // with it).
    std::shared_ptr<std::atomic<quint64>> Latest = std::make_shared<std::atomic<quint64>>(0);
    QThread Thread;
    TZvPreviewWorker* Worker;
    bool Busy = false;
};

} // namespace zv

Q_DECLARE_METATYPE(zv::TZvPreviewResult)
