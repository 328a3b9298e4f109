// A form with the control in it: opens a picture, also one that is dropped on it, edits it, takes it back.
// SPDX-License-Identifier: MIT
#include <pixvane_widget.h>

#include <QApplication>
#include <QFileDialog>
#include <QMainWindow>
#include <QStatusBar>
#include <QToolBar>

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    QMainWindow form;
    form.setWindowTitle("Pixvane form");
    auto* picture = new PixvaneWidget;
    picture->setScrollWindowVisible(true);
    form.setCentralWidget(picture);

    QToolBar* bar = form.addToolBar("Edit");
    bar->addAction("Open...", [&] {
        const QString file = QFileDialog::getOpenFileName(&form);
        if (!file.isEmpty() && !picture->LoadImage(file))
            form.statusBar()->showMessage("No picture: " + file);
    });
    bar->addAction("Levels", picture, &PixvaneWidget::Autolevels);
    bar->addAction("Colour", [=] { picture->Saturate(140); });
    bar->addAction("Sharpen", picture, &PixvaneWidget::Sharpen);
    QAction* undo = bar->addAction("Undo", picture, &PixvaneWidget::Undo);
    QAction* redo = bar->addAction("Redo", picture, &PixvaneWidget::Redo);

    QObject::connect(picture, &PixvaneWidget::OnDropFile, picture, &PixvaneWidget::LoadImage);
    QObject::connect(picture, &PixvaneWidget::frameChanged, [=] {
        undo->setEnabled(picture->UndoEnable());
        redo->setEnabled(picture->RedoEnable());
    });
    QObject::connect(picture, &PixvaneWidget::OnMouseMove, [&](int, int x, int y) {
        form.statusBar()->showMessage(
            QString("%1, %2  %3").arg(x).arg(y).arg(picture->GetPixel(x, y).name()));
    });

    if (count > 1) picture->LoadImage(QString::fromLocal8Bit(arguments[1]));
    form.resize(900, 640);
    form.show();
    return QApplication::exec();
}
