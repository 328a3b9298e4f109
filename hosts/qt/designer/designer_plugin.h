// The widget in Qt Designer's box, and for forms that are loaded at run time.
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

class PixvaneDesignerPlugin : public QObject, public QDesignerCustomWidgetInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetInterface")
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override { return false; }
    QWidget* createWidget(QWidget* parent) override;
    QString domXml() const override;
};
