// A window out of which a file can be dragged: drag_source FILE. A press anywhere in it starts the drag.
// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

namespace {

class Source : public QWidget {
public:
    explicit Source(const QString& path) : path_(path) {}

protected:
    void mousePressEvent(QMouseEvent*) override {
        auto* files = new QMimeData;
        files->setUrls({QUrl::fromLocalFile(path_)});
        auto* drag = new QDrag(this);
        drag->setMimeData(files);
        // For the test to see: a release before anyone takes the file would be no drop.
        connect(drag, &QDrag::actionChanged, this, [this](Qt::DropAction action) {
            setWindowTitle(action == Qt::IgnoreAction ? QStringLiteral("drag source")
                                                      : QStringLiteral("drag source: taken"));
        });
        drag->exec(Qt::CopyAction);
    }

private:
    QString path_;
};

}  // namespace

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    if (count != 2) return 2;
    Source source(QString::fromLocal8Bit(arguments[1]));
    source.setWindowTitle(QStringLiteral("drag source"));
    source.setGeometry(0, 0, 120, 90);
    source.show();
    return QApplication::exec();
}
