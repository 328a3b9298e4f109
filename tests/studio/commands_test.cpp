// Every command of the table, through its dialog: shown live, taken back, applied.
// SPDX-License-Identifier: MIT
#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QSlider>
#include <QThread>

#include "argument_editors.h"
#include "studio_window.h"

namespace studio {
namespace {

/// What must be as it was when a dialog is cancelled.
struct State {
    QByteArray pixels;
    bool undo, redo, modified;
    std::size_t steps;
    bool operator==(const State&) const = default;
};

class Commands : public StudioWindow {
protected:
    State state() {
        std::size_t steps = 0;
        pixvane_macro_step_count(view().control(), &steps);
        return {view().Picture(), view().UndoEnable(), view().RedoEnable(), view().Modified(), steps};
    }
    void wait_for_preview(const std::function<void()>& act) {
        bool isShown = false;
        const auto connection = QObject::connect(dialog(), &CommandDialog::shown, [&] { isShown = true; });
        act();
        wait_until([&] { return isShown; });
        QObject::disconnect(connection);
    }
    template <class Test>
    void for_each_command(Test test) {
        for (const Category& category : command_categories()) {
            for (const Member* command : category.members) {
                SCOPED_TRACE(command->name);
                test(*command);
                if (HasFatalFailure()) return;
            }
        }
    }
};

TEST_F(Commands, EachIsInAMenuByItsName) {
    for_each_command([&](const Member& command) {
        const auto* action = window.findChild<QAction*>(QString::fromLatin1(command.name));
        ASSERT_NE(action, nullptr);
        EXPECT_FALSE(action->toolTip().isEmpty());
        EXPECT_EQ(action->text().endsWith(QChar(0x2026)), command.argument_count > 0);
    });
}

TEST_F(Commands, CancelledDialogsLeaveNoTrace) {
    view().BeginMacros();
    view().Desaturate();
    view().Undo();
    const State before = state();
    for_each_command([&](const Member& command) {
        if (command.argument_count == 0) return;
        window.start_command(command);
        ASSERT_NE(dialog(), nullptr);
        wait_for_preview([] {});
        auto* hold = dialog()->findChild<QPushButton*>(QStringLiteral("before"));
        wait_for_preview([&] { hold->setDown(true), emit hold->pressed(); });
        wait_for_preview([&] { hold->setDown(false), emit hold->released(); });
        dialog()->reject();
        EXPECT_EQ(state(), before);
        wait_until([&] { return dialog() == nullptr; });
    });
}

TEST_F(Commands, WhatADialogAppliesIsWhatTheCommandDoes) {
    const QByteArray original = view().Picture();
    for_each_command([&](const Member& command) {
        view().setPicture(original);
        QVariantList values;
        pixvane_seed_random(7);
        window.start_command(command);
        if (command.argument_count > 0) {
            ASSERT_NE(dialog(), nullptr);
            wait_for_preview([] {});
            values = dialog()->values();
            pixvane_seed_random(7);
            dialog()->accept();
            wait_until([&] { return dialog() == nullptr; });
        }
        const QByteArray applied = view().Picture();
        const QSize size(view().ImageWidth(), view().ImageHeight());

        PixvaneWidget other;
        other.setPicture(original);
        pixvane_seed_random(7);
        pixvane_status status = PIXVANE_OK;
        other.invoke(QString::fromLatin1(command.name), values, &status);
        EXPECT_EQ(status, PIXVANE_OK);
        EXPECT_EQ(size, QSize(other.ImageWidth(), other.ImageHeight()));
        EXPECT_TRUE(applied == other.Picture());
        EXPECT_EQ(view().UndoEnable(), other.UndoEnable());
    });
}

TEST_F(Commands, ABeforeThatIsHeldShowsThePictureAsItWas) {
    const auto frame = [&] { return view().grab().toImage(); };
    wait_until([&] { return view().isVisible(); });
    const QImage before = frame();
    window.start_command(*find_member(u"Hue"));
    wait_for_preview([] {});
    const QImage shown = frame();
    EXPECT_NE(shown, before);
    auto* hold = dialog()->findChild<QPushButton*>(QStringLiteral("before"));
    wait_for_preview([&] { emit hold->pressed(); });
    EXPECT_EQ(frame(), before);
    wait_for_preview([&] { emit hold->released(); });
    EXPECT_EQ(frame(), shown);
    dialog()->reject();
    EXPECT_EQ(frame(), before);
}

TEST_F(Commands, EditorsKeepWhatTheyAreGiven) {
    for_each_command([&](const Member& command) {
        for (int i = 0; i < command.argument_count; ++i) {
            const Argument& argument = command.arguments[i];
            const std::unique_ptr<ArgumentEditor> editor(make_editor(argument, {}, nullptr));
            if (argument.kind != PIXVANE_INT32_ARRAY) {
                EXPECT_EQ(editor->value(), initial_value(argument));
            }
            if (argument.has_slider == 0) continue;
            for (const double number : {argument.slider_minimum, argument.slider_maximum}) {
                editor->set_value(number);
                EXPECT_DOUBLE_EQ(editor->value().toDouble(), number) << argument.name;
                const auto* slider = editor->findChild<QSlider*>();
                EXPECT_EQ(slider->value(),
                          number == argument.slider_minimum ? slider->minimum() : slider->maximum());
            }
        }
    });
}

TEST_F(Commands, SlowOnesSayTheirNameBeforeTheyStart) {
    Picture picture(view());
    CommandRunner runner(picture);
    const Member& command = *find_member(u"Desaturate");
    QStringList told;
    QObject::connect(&runner, &CommandRunner::waits, [&](const QString& name) {
        told.append(name + (view().UndoEnable() ? QStringLiteral(" done") : QString()));
    });
    runner.run(command);
    EXPECT_TRUE(told.isEmpty()) << "a small picture takes no time";
    view().Undo();
    // As if it had been slow.
    runner.timed(command, [] { QThread::msleep(3); });
    ASSERT_TRUE(view().LoadFromImageArray(pixvane::test::patterned_pixels(kWidth * 8, kHeight * 8),
                                          kWidth * 8, kHeight * 8));
    EXPECT_GE(runner.expected_milliseconds(command), 64 * 3 * 0.99);
    runner.run(command);
    EXPECT_EQ(told, QStringList({title_of(command), QStringLiteral(" done")}));
}

}  // namespace
}  // namespace studio
