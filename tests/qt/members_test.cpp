// The members in Qt's terms: every property, values of every kind, calls that are refused; the plugin of
// Designer. SPDX-License-Identifier: MIT
#include <QBuffer>
#include <QFileInfo>
#include <QMetaProperty>
#include <QPluginLoader>
#include <QUiLoader>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <cmath>
#include <memory>
#include <numeric>

#include "support/widgets.h"

namespace pixvane::test {
namespace {

/// What a form would put: something else than there is, within the range.
QVariant another(const QVariant& value, const pixvane_argument_info& argument) {
    switch (argument.kind) {
        case PIXVANE_BOOL:
            return !value.toBool();
        case PIXVANE_COLOR:
            return QColor(10, 20, 31);
        case PIXVANE_STRING:
            return QStringLiteral("ä\u4e2d");
        default: {
            const bool sliding = argument.has_slider != 0;
            const double low = sliding ? argument.slider_minimum : argument.has_range ? argument.minimum : 3;
            const double high = sliding ? argument.slider_maximum : argument.has_range ? argument.maximum : 4;
            const double number = value.toDouble() == low ? high : low;
            return argument.kind == PIXVANE_DOUBLE ? QVariant(number) : QVariant(static_cast<int>(number));
        }
    }
}

TEST(Members, APropertyIsWhatTheControlHas) {
    PixvaneWidget widget;
    widget.NewImage(20, 10);
    int properties = 0, put = 0;
    for (std::size_t i = 0; i < pixvane_member_count(); ++i) {
        const pixvane_member_info& info = *pixvane_member_at(i);
        if (info.type != PIXVANE_PROPERTY) continue;
        SCOPED_TRACE(info.name);
        ++properties;
        const QMetaProperty property =
            widget.metaObject()->property(widget.metaObject()->indexOfProperty(info.name));
        ASSERT_TRUE(property.isReadable());
        EXPECT_EQ(property.isWritable(), info.writable != 0);
        EXPECT_EQ(property.read(&widget), widget.invoke(QString::fromLatin1(info.name)));
        if (!info.writable || !property.isStored()) continue;
        const QVariant before = property.read(&widget);
        ASSERT_TRUE(property.write(&widget, another(before, info.arguments[0])));
        const QVariant after = property.read(&widget);
        put += after != before ? 1 : 0;
        EXPECT_EQ(after, widget.invoke(QString::fromLatin1(info.name)));
    }
    EXPECT_GT(properties, 20);
    // Few refuse a value of their slider: what there is to be kept keeps it.
    EXPECT_GT(put * 4, properties * 2);
}

TEST(Members, ValuesOfEveryKindComeThrough) {
    PixvaneWidget widget;
    const QByteArray pixels = patterned_pixels(50, 40);
    EXPECT_TRUE(widget.LoadFromImageArray(pixels, 50, 40));
    EXPECT_EQ(widget.GetImageArray(), pixels);
    EXPECT_FALSE(widget.LoadFromImageArray(QByteArray(), 50, 40));
    EXPECT_FALSE(widget.LoadFromImageArray(pixels.left(100), 50, 40));
    const QList<int> counts = widget.GetRHistogram();
    ASSERT_EQ(counts.size(), 256);
    EXPECT_EQ(std::accumulate(counts.begin(), counts.end(), 0), 2000);
    const QColor color = widget.GetPixel(1, 0);
    EXPECT_EQ(color, QColor::fromRgb(13, 5, 7));
    widget.UserEffect({0, 0, 0, 0, 1, 0, 0, 0, 0});
    EXPECT_TRUE(widget.UndoEnable());
    QByteArray file;
    QBuffer buffer(&file);
    buffer.open(QIODevice::WriteOnly);
    QImage(7, 5, QImage::Format_RGB32).save(&buffer, "PNG");
    widget.setPicture(file);
    EXPECT_EQ(QImage::fromData(widget.Picture(), "BMP").size(), QSize(7, 5));
    widget.Empty();
    EXPECT_TRUE(widget.Picture().isNull());
    EXPECT_TRUE(widget.GetRHistogram().isEmpty());

    // By name, from whatever a script or a dialog has at hand.
    pixvane_status status = PIXVANE_E_INTERNAL;
    EXPECT_EQ(widget.invoke(QStringLiteral("IsEmpty"), {}, &status), QVariant(true));
    EXPECT_EQ(status, PIXVANE_OK);
    widget.invoke(QStringLiteral("NewImage"), {QStringLiteral("30"), 20.0});
    EXPECT_EQ(widget.ImageWidth(), 30);
    for (const QVariant& red :
         {QVariant(QColor(255, 0, 0)), QVariant(0xFF), QVariant(QStringLiteral("red"))}) {
        widget.setBackColor1(Qt::black);
        widget.invoke(QStringLiteral("BackColor1"), {red});
        EXPECT_EQ(widget.BackColor1(), QColor(255, 0, 0));
    }
    widget.invoke(QStringLiteral("UserEffect"), {QVariant(QVariantList{0, 0, 0, 0, 1, 0, 0, 0, 0})}, &status);
    EXPECT_EQ(status, PIXVANE_OK);
    EXPECT_TRUE(widget.UndoEnable());
    widget.BeginPreview();
    widget.Preview(QStringLiteral("AddSimpleBorder"), {5, QColor(1, 2, 3)});
    widget.EndPreview(true);
    EXPECT_EQ(widget.ImageWidth(), 40);
    EXPECT_EQ(widget.GetPixel(0, 0), QColor(1, 2, 3));
    EXPECT_FALSE(widget.invoke(QStringLiteral("Blur"), {}, &status).isValid());
    EXPECT_EQ(status, PIXVANE_E_COUNT);
    EXPECT_FALSE(widget.invoke(QStringLiteral("NoSuchMember"), {1}, &status).isValid());
    EXPECT_EQ(status, PIXVANE_E_MEMBER);
}

TEST(Designer, ThePluginLoadsAndAFormMadeWithItWorks) {
    QPluginLoader loader(QStringLiteral(PIXVANE_DESIGNER_PLUGIN));
    auto* plugin = qobject_cast<QDesignerCustomWidgetInterface*>(loader.instance());
    ASSERT_NE(plugin, nullptr) << loader.errorString().toStdString();
    EXPECT_FALSE(plugin->icon().pixmap(24, 24).isNull());
    EXPECT_TRUE(plugin->domXml().contains(QStringLiteral("class=\"%1\"").arg(plugin->name())));
    const std::unique_ptr<QWidget> made(plugin->createWidget(nullptr));
    EXPECT_NE(qobject_cast<PixvaneWidget*>(made.get()), nullptr);

    QByteArray form = R"(<ui version="4.0"><class>Form</class>
        <widget class="QWidget" name="Form">
         <widget class="PixvaneWidget" name="picture">
          <property name="BackColor1"><color><red>1</red><green>2</green><blue>3</blue></color></property>
          <property name="JpegQuality"><number>55</number></property>
          <property name="keyboardEnabled"><bool>false</bool></property>
         </widget>
         <widget class="QPushButton" name="invert"/>
        </widget>
        <connections><connection>
         <sender>invert</sender><signal>clicked()</signal><receiver>picture</receiver><slot>Invert()</slot>
        </connection></connections></ui>)";
    QBuffer file(&form);
    QUiLoader forms;
    forms.clearPluginPaths();
    forms.addPluginPath(QFileInfo(QStringLiteral(PIXVANE_DESIGNER_PLUGIN)).path());
    const std::unique_ptr<QWidget> window(forms.load(&file));
    ASSERT_NE(window, nullptr) << forms.errorString().toStdString();
    auto* picture = window->findChild<PixvaneWidget*>(QStringLiteral("picture"));
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->BackColor1(), QColor(1, 2, 3));
    EXPECT_EQ(picture->JpegQuality(), 55);
    EXPECT_FALSE(picture->keyboardEnabled());
    picture->NewImage(10, 10);
    QMetaObject::invokeMethod(window->findChild<QObject*>(QStringLiteral("invert")), "click");
    EXPECT_EQ(picture->GetPixel(0, 0), QColor(0, 0, 0));
}

}  // namespace
}  // namespace pixvane::test
