// The widget as the window of its control: pictures to and from the clipboard.
// SPDX-License-Identifier: MIT
#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

#include "widget_window.h"

bool PixvaneWidget::Window::offer_clipboard(const QByteArray& bmp) {
    auto* data = new QMimeData;
    data->setData(QStringLiteral("image/bmp"), bmp);
    // For programs that want another format: the toolkit converts.
    data->setImageData(QImage::fromData(bmp, "BMP"));
    QGuiApplication::clipboard()->setMimeData(data);
    return true;
}

QByteArray PixvaneWidget::Window::requested_clipboard() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (data == nullptr) return {};
    // Files as they are, those first that keep the most.
    for (const char* format : {"image/png", "image/bmp", "image/tiff", "image/jpeg"}) {
        QByteArray file = data->data(QString::fromLatin1(format));
        if (!file.isEmpty()) return file;
    }
    const QImage image = qvariant_cast<QImage>(data->imageData());
    if (image.isNull()) return {};
    QByteArray file;
    QBuffer buffer(&file);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return file;
}
