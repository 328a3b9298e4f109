// How large the file of a picture would be: a control of its own saves it aside.
// SPDX-License-Identifier: MIT
#include "size_probe.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include "pixvane/pixvane.hpp"

namespace studio {

SizeProbe::SizeProbe(QByteArray picture, QObject* parent)
    : QObject(parent), thread_([this, picture = std::move(picture)] { work(picture); }) {}

SizeProbe::~SizeProbe() {
    {
        const std::lock_guard lock(mutex_);
        ends_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

void SizeProbe::request(int type, int quality) {
    {
        const std::lock_guard lock(mutex_);
        request_ = Request{type, quality, ++lastNumber_};
    }
    wake_.notify_one();
}

void SizeProbe::work(const QByteArray& picture) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("picture"));
    pixvane::IPixvane control;
    control.put_Picture({reinterpret_cast<const std::uint8_t*>(picture.constData()),
                         static_cast<std::size_t>(picture.size())});
    const bool isThere = folder.isValid() && !control.IsEmpty();
    for (;;) {
        Request request{};
        {
            std::unique_lock lock(mutex_);
            wake_.wait(lock, [&] { return ends_ || request_; });
            if (ends_ || !request_) return;
            request = *request_;
            request_.reset();
        }
        control.put_JpegQuality(request.quality);
        const bool isSaved = isThere && control.SaveImage(path.toStdString(), request.type);
        const qint64 bytes = isSaved ? QFileInfo(path).size() : -1;
        // Posted: answers arrive in the thread of the dialog, those to older requests unheard.
        QMetaObject::invokeMethod(
            this,
            [this, bytes, number = request.number] {
                if (number == lastNumber_) emit measured(bytes);
            },
            Qt::QueuedConnection);
    }
}

}  // namespace studio
