#include "shell/GlobalHotkeyController.h"
#include "shell/InterfaceLanguage.h"
#include "shell/ShortcutKeys.h"
#include "shell/ShortcutRecorderModel.h"

#include <QJsonDocument>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace fenrow {
namespace {

using namespace KeyModifier;

TEST(KeyCombo, JsonFormRoundTripsAndRefusesWhatIsNoCombination)
{
    EXPECT_EQ(QJsonDocument(defaultGlobalShortcut.toJson()).toJson(QJsonDocument::Compact),
              R"({"keyCode":49,"modifierFlags":1179648})");
    for (const KeyCombo combo : {KeyCombo{0, 0}, KeyCombo{65535, 0xFFFFFFFF}, KeyCombo{117, recordingMask | 0x10000}})
        EXPECT_EQ(KeyCombo::fromJson(combo.toJson()), combo);

    // Damaged forms are covered where the settings file is read.
    const auto parsed = [](const char *json) { return KeyCombo::fromJson(QJsonDocument::fromJson(json).object()); };
    EXPECT_EQ(parsed(R"({"modifierFlags": 256, "keyCode": 3, "extra": true})"), (KeyCombo{3, 256}));
    EXPECT_EQ(parsed(R"({"keyCode": 65536, "modifierFlags": 0})"), std::nullopt);
}

TEST(ShortcutKeys, DisplayStringsShowModifiersInFixedOrderThenTheKey)
{
    using ShortcutKeys::displayString;
    const std::array<const char *, 9> shown{"⌘Z", "⇧⌘Z", "⇧⌘N", "⌘F", "⇧⌘E", "⇧⌘C", "⌘=", "⌘-", "⌘0"};
    for (std::size_t i = 0; i < shown.size(); ++i)
        EXPECT_EQ(displayString(defaultShortcut(ShortcutAction(i))), QString::fromUtf8(shown[i]))
            << rawString(ShortcutAction(i)).toStdString();
    EXPECT_EQ(displayString(defaultGlobalShortcut), "⇧⌘Space");
    EXPECT_EQ(displayString({0, command | shift | option | control}), "⌃⌥⇧⌘A");
    EXPECT_EQ(displayString({22, option}), "⌥6") << "the digit row is not in code order";
    EXPECT_EQ(displayString({23, control}), "⌃5");
    EXPECT_EQ(displayString({42, command}), "⌘\\");
    EXPECT_EQ(displayString({50, command}), "⌘`");
    EXPECT_EQ(displayString({36, command}), "⌘↩");
    EXPECT_EQ(displayString({53, 0}), "⎋");
    EXPECT_EQ(displayString({125, shift}), "⇧↓");
    EXPECT_EQ(displayString({46, 0x10000}), "M") << "bits other than the four show nothing";

    ASSERT_TRUE(InterfaceLanguage::apply("en"));
    EXPECT_EQ(displayString({117, command}), "⌘Unknown key") << "forward delete is left out on purpose";
    ASSERT_TRUE(InterfaceLanguage::apply("de"));
    EXPECT_EQ(displayString({10, shift}), "⇧Unbekannte Taste");
    InterfaceLanguage::apply("en");

    int named = 0, mapped = 0;
    for (int code = 0; code <= 0xFFFF; ++code) {
        named += ShortcutKeys::keyName(quint16(code)).has_value();
        mapped += ShortcutKeys::qtKey(quint16(code)).has_value();
    }
    EXPECT_EQ(named, 56);
    EXPECT_EQ(mapped, 57);
}

TEST(ShortcutKeys, CombinationsBecomeQtKeysWithTheActionsDefaultAsFallback)
{
    using ShortcutKeys::keyboardShortcut;
    EXPECT_EQ(keyboardShortcut({6, command}, ShortcutAction::undo), QKeyCombination(Qt::ControlModifier, Qt::Key_Z));
    EXPECT_EQ(keyboardShortcut(defaultGlobalShortcut, ShortcutAction::undo),
              QKeyCombination(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_Space));
    EXPECT_EQ(keyboardShortcut({0, control | option}, ShortcutAction::undo),
              QKeyCombination(Qt::MetaModifier | Qt::AltModifier, Qt::Key_A));
    EXPECT_EQ(keyboardShortcut({117, command}, ShortcutAction::undo), QKeyCombination(Qt::ControlModifier, Qt::Key_Delete));
    EXPECT_EQ(keyboardShortcut({22, 0}, ShortcutAction::undo), QKeyCombination(Qt::Key_6));
    EXPECT_EQ(keyboardShortcut({39, command}, ShortcutAction::undo), QKeyCombination(Qt::ControlModifier, Qt::Key_Apostrophe));
    EXPECT_EQ(keyboardShortcut({50, command}, ShortcutAction::undo), QKeyCombination(Qt::ControlModifier, Qt::Key_QuoteLeft));
    EXPECT_EQ(keyboardShortcut({36, 0}, ShortcutAction::undo), QKeyCombination(Qt::Key_Return));
    EXPECT_EQ(keyboardShortcut({126, shift}, ShortcutAction::undo), QKeyCombination(Qt::ShiftModifier, Qt::Key_Up));
    // A code without a Qt key: the action's own default, modifiers and all.
    EXPECT_EQ(keyboardShortcut({10, control}, ShortcutAction::zoomIn), QKeyCombination(Qt::ControlModifier, Qt::Key_Equal));
    EXPECT_EQ(keyboardShortcut({96, shift}, ShortcutAction::copyMarkdown),
              QKeyCombination(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_C));

    // Key presses map back onto the same table.
    for (int code = 0; code < 128; ++code) {
        const std::optional<Qt::Key> key = ShortcutKeys::qtKey(quint16(code));
        if (key) {
            EXPECT_EQ(ShortcutKeys::keyCombo(QKeyCombination(Qt::ControlModifier | Qt::KeypadModifier, *key)),
                      (KeyCombo{quint16(code), command}));
        }
    }
    EXPECT_EQ(ShortcutKeys::keyCombo(QKeyCombination(Qt::ShiftModifier, Qt::Key_Backtab)), (KeyCombo{48, shift}));
    EXPECT_EQ(ShortcutKeys::keyCombo(QKeyCombination(Qt::ControlModifier, Qt::Key_Control)), std::nullopt);
    EXPECT_EQ(ShortcutKeys::keyCombo(QKeyCombination(Qt::Key_F5)), std::nullopt);

    EXPECT_EQ(ShortcutKeys::carbonModifiers(shift | command), 768u);
    EXPECT_EQ(ShortcutKeys::carbonModifiers(control | option | 0x10000), 6144u);
}

class ShortcutRecording : public ::testing::Test {
protected:
    void start()
    {
        recorder.press([this](const KeyCombo &combo) { captured.push_back(combo); });
    }

    ShortcutRecorderModel recorder;
    std::vector<KeyCombo> captured;
    QSignalSpy recording{&recorder, &ShortcutRecorderModel::recordingChanged};
};

TEST_F(ShortcutRecording, AKeyWithoutModifierIsRefusedAndRecordingGoesOn)
{
    EXPECT_FALSE(recorder.keyDown(0, shift)) << "nothing is taken while not recording";
    start();
    EXPECT_TRUE(recorder.isRecording());
    EXPECT_TRUE(recorder.keyDown(0, 0));
    EXPECT_TRUE(recorder.keyDown(0, 0x10000)) << "caps lock is no modifier";
    EXPECT_TRUE(recorder.keyDown(QKeyCombination(Qt::ShiftModifier, Qt::Key_Shift))) << "a bare modifier has no code";
    EXPECT_TRUE(recorder.isRecording());
    EXPECT_TRUE(captured.empty());

    EXPECT_TRUE(recorder.keyDown(0, shift | 0x10000 | 0x800000));
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(captured, std::vector<KeyCombo>{(KeyCombo{0, shift})}) << "only the four modifiers are kept";
    EXPECT_EQ(recording.size(), 2);
}

TEST_F(ShortcutRecording, EscapeOrASecondPressStopsWithoutCapturing)
{
    start();
    EXPECT_TRUE(recorder.keyDown(KeyCode::escape, command));
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_FALSE(recorder.keyDown(0, command));
    start();
    start();
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_FALSE(recorder.keyDown(0, command));
    EXPECT_TRUE(captured.empty());
    EXPECT_EQ(recording.size(), 4);

    start();
    EXPECT_TRUE(recorder.keyDown(QKeyCombination(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_Z)));
    EXPECT_EQ(captured, std::vector<KeyCombo>{(KeyCombo{6, shift | command})});
}

TEST(ShortcutKeys, TheCaptureKeysAreOneRuleInsideTheProgramAndOnTheDesktop)
{
    using ShortcutKeys::captureShortcut;
    EXPECT_EQ(captureShortcut(defaultGlobalShortcut), QKeyCombination(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_Space));
    EXPECT_EQ(captureShortcut({40, command | option}), QKeyCombination(Qt::ControlModifier | Qt::AltModifier, Qt::Key_K));
    // A code without a Qt key: the default combination, not half of it.
    EXPECT_EQ(captureShortcut({10, option}), QKeyCombination(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_Space));
}

// Keeps what the controller asks of the desktop.
class ScriptedHotkeyBackend : public GlobalHotkeyBackend {
public:
    struct Log {
        std::vector<Request> registered;
        std::vector<quintptr> unregistered;
        std::function<void()> pressed;
        std::function<void(quintptr, int)> lost;
        bool handlerRemoved = false;
        int status = 0;
    };
    explicit ScriptedHotkeyBackend(Log &log) : m_log(log) {}

    void installHandler(Handlers handlers) override
    {
        m_log.pressed = std::move(handlers.pressed);
        m_log.lost = std::move(handlers.lost);
    }
    void removeHandler() override { m_log.handlerRemoved = true; }
    int registerHotKey(const Request &request, quintptr &handle) override
    {
        m_log.registered.push_back(request);
        handle = m_log.registered.size();
        return m_log.status;
    }
    void unregisterHotKey(quintptr handle) override { m_log.unregistered.push_back(handle); }

private:
    Log &m_log;
};

QStringList hotkeyMessages;

void keepHotkeyMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (QByteArrayView(context.category) == "fenrow.hotkey" && type == QtCriticalMsg)
        hotkeyMessages << message;
}

class GlobalHotkey : public ::testing::Test {
protected:
    void SetUp() override
    {
        hotkeyMessages.clear();
        m_previousHandler = qInstallMessageHandler(keepHotkeyMessage);
    }
    void TearDown() override { qInstallMessageHandler(m_previousHandler); }

private:
    QtMessageHandler m_previousHandler = nullptr;
};

TEST_F(GlobalHotkey, ADesktopThatRefusesLaterTakesTheKeyBackAndSaysWhy)
{
    ScriptedHotkeyBackend::Log log;
    GlobalHotkeyController controller([] {}, std::make_unique<ScriptedHotkeyBackend>(log));
    QSignalSpy changes(&controller, &GlobalHotkeyController::registrationChanged);
    EXPECT_EQ(controller.status(), std::nullopt);
    controller.registerHotKey(defaultGlobalShortcut);
    controller.registerHotKey({0, command});
    ASSERT_TRUE(controller.isRegistered());
    EXPECT_EQ(controller.status(), 0);
    EXPECT_EQ(changes.size(), 1) << "replacing a held key with another held one is no change";
    ASSERT_TRUE(log.lost);

    // An answer about the key replaced already changes nothing.
    log.lost(1, GlobalHotkeyBackend::cancelledStatus);
    EXPECT_TRUE(controller.isRegistered());
    EXPECT_TRUE(hotkeyMessages.isEmpty());

    log.lost(2, GlobalHotkeyBackend::cancelledStatus);
    EXPECT_FALSE(controller.isRegistered());
    EXPECT_EQ(controller.status(), GlobalHotkeyBackend::cancelledStatus);
    EXPECT_EQ(hotkeyMessages, QStringList({"Failed to register global hotkey (status -128)."}));
    EXPECT_EQ(log.unregistered, (std::vector<quintptr>{1, 2})) << "the backend lets go of what it lost";
    EXPECT_EQ(changes.size(), 2);

    controller.unregisterHotKey();
    EXPECT_EQ(controller.status(), std::nullopt);
    EXPECT_EQ(log.unregistered.size(), 2u);
}

} // namespace
} // namespace fenrow
