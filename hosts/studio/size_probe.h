// How large the file of a picture would be: a control of its own saves it aside.
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace studio {

/// Encodes in a thread of its own; only the last request counts.
class SizeProbe : public QObject {
    Q_OBJECT

public:
    /// `picture` is a file in memory, as the property Picture gives it: reading that leaves no trace.
    explicit SizeProbe(QByteArray picture, QObject* parent = nullptr);
    ~SizeProbe() override;

    void request(int type, int quality);

signals:
    /// The answer to the last request, in bytes; below 0 if the format can't hold the picture.
    void measured(qint64 bytes);

private:
    struct Request {
        int type, quality, number;
    };
    void work(const QByteArray& picture);

    std::mutex mutex_;
    std::condition_variable wake_;
    std::optional<Request> request_;
    int lastNumber_ = 0;
    bool ends_ = false;
    std::thread thread_;
};

}  // namespace studio
