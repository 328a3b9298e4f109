// The panels beside the picture: settings, macros, the histogram, events, and where they lie.
// SPDX-License-Identifier: MIT
#include <QAction>
#include <QDockWidget>
#include <QListWidget>
#include <QSettings>
#include <QSlider>
#include <QTreeWidget>

#include "docks/event_log.h"
#include "studio_window.h"

namespace studio {
namespace {

class Panels : public StudioWindow {
protected:
    QDockWidget* dock(const char* name) { return window.findChild<QDockWidget*>(QLatin1String(name)); }
    template <class T>
    T* inside(const char* name) {
        return dock(name)->findChild<T*>();
    }
};

TEST_F(Panels, SlidersOfSettingsPutTheirSettings) {
    // Whatever the editors are moved to, the control has it: the panel shows the same when it looks again.
    const auto settings = [&] {
        QVariantList values;
        for (const Category& category : setting_categories())
            for (const Member* setting : category.members)
                if (setting->macro_code >= 0)
                    values.append(view().invoke(QString::fromLatin1(setting->name)));
        return values;
    };
    const auto sliders = dock("penDock")->findChildren<QSlider*>();
    ASSERT_GT(sliders.size(), 5);
    int changes = 0;
    for (QSlider* slider : sliders) {
        const QVariantList before = settings();
        const int next = slider->value() == slider->maximum() ? slider->minimum() : slider->value() + 1;
        slider->setValue(next);
        if (settings() != before) ++changes;
        EXPECT_EQ(slider->value(), next) << slider->accessibleName().toStdString();
    }
    EXPECT_EQ(changes, sliders.size());
}

TEST_F(Panels, AMacroIsRecordedListedAndPlayed) {
    auto* panel = inside<MacroPanel>("macroDock");
    const QList<QAction*> actions = panel->actions_of_menu();
    QAction *record = actions[0], *stop = actions[1], *play = actions[2];
    EXPECT_FALSE(play->isEnabled());
    const QByteArray original = view().Picture();
    record->trigger();
    EXPECT_FALSE(record->isEnabled());
    window.start_command(*find_member(u"Invert"));
    window.start_command(*find_member(u"Desaturate"));
    stop->trigger();
    const QByteArray edited = view().Picture();

    const auto* steps = panel->findChild<QTreeWidget*>();
    ASSERT_EQ(steps->topLevelItemCount(), 3) << "the settings and two commands";
    EXPECT_GT(steps->topLevelItem(0)->childCount(), 20);
    EXPECT_EQ(steps->topLevelItem(1)->text(0), QStringLiteral("Invert"));
    EXPECT_EQ(steps->topLevelItem(2)->text(0), QStringLiteral("Desaturate"));

    view().setPicture(original);
    window.refresh();
    ASSERT_TRUE(play->isEnabled());
    play->trigger();
    EXPECT_TRUE(view().Picture() == edited);
}

TEST_F(Panels, TheHistogramFollowsThePicture) {
    auto* histogram = inside<HistogramView>("histogramDock");
    const auto shown = [&] { return histogram->grab().toImage(); };
    QImage last = shown();
    const auto changes = [&] {
        wait_until([&] { return shown() != last; });
        last = shown();
    };
    window.start_command(*find_member(u"Desaturate"));
    changes();
    window.findChild<QAction*>(QStringLiteral("Invert"))->trigger();
    changes();
}

TEST_F(Panels, EventsAreListedWhileTheyAreSeen) {
    const auto* list = inside<QListWidget>("eventDock");
    const auto move = [&](int x, int y) {
        pixvane_window_mouse(view().control(), PIXVANE_MOUSE_MOVE, 0, x, y, 0);
    };
    move(5, 5);
    EXPECT_EQ(list->count(), 0);
    dock("eventDock")->show();
    wait_until([&] { return list->isVisible(); });
    move(6, 6);
    move(7, 7);
    ASSERT_EQ(list->count(), 1) << "the same again is the same line";
    EXPECT_TRUE(list->item(0)->text().contains(QStringLiteral("OnMouseMove")));
    EXPECT_TRUE(list->item(0)->text().endsWith(QStringLiteral("×2")));
    dock("eventDock")->hide();
    move(8, 8);
    EXPECT_EQ(list->count(), 1);
}

TEST_F(Panels, TheLayoutIsKept) {
    dock("eventDock")->show();
    dock("histogramDock")->hide();
    window.findChild<QAction*>(QStringLiteral("ScrollWindowVisible"))->setChecked(false);
    ASSERT_TRUE(window.close());
    MainWindow next;
    next.show();
    EXPECT_TRUE(next.findChild<QDockWidget*>(QStringLiteral("eventDock"))->isVisible());
    EXPECT_FALSE(next.findChild<QDockWidget*>(QStringLiteral("histogramDock"))->isVisible());
    EXPECT_FALSE(next.view().ScrollWindowVisible());
    QSettings().clear();
}

}  // namespace
}  // namespace studio
