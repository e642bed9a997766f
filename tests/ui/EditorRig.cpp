// SPDX-License-Identifier: GPL-3.0-or-later
#include "EditorRig.h"

namespace quorel::test
{
namespace
{
constexpr int patienceMillis = 20000;
/** More than the double-click time, so that separate clicks stay separate. */
constexpr int betweenClicksMillis = 1000;
/** How long to wait to hear of the pointer: it comes over a window of ours, or rests elsewhere, unheard. */
constexpr int pointerArrivesMillis = 3000;
constexpr int pointerLeavesMillis = 200;
constexpr int dragSteps = 8;
constexpr auto mouse = juce::MouseInputSource::InputSourceType::mouse;
constexpr float pressure = 1.0f;
constexpr float orientation = 0.0f;

juce::ComponentPeer& peerOf(juce::Component& component)
{
    auto* peer = component.getPeer();
    jassert(peer != nullptr);
    return *peer;
}

juce::Point<float> positionInPeer(juce::Component& target, juce::Point<int> at)
{
    return peerOf(target).getComponent().getLocalPoint(&target, at.toFloat());
}

juce::Component* findIn(juce::Component& parent, const std::function<bool(juce::Component&)>& matches,
                        bool mustShow)
{
    for (auto* child : parent.getChildren())
    {
        if (matches(*child) && (!mustShow || child->isShowing()))
            return child;
        if (auto* found = findIn(*child, matches, mustShow))
            return found;
    }
    return nullptr;
}

/** Rows of the menu window that was opened last; separators have no text and don't count. */
std::vector<juce::AccessibilityHandler*> menuRows()
{
    std::vector<juce::AccessibilityHandler*> rows;
    if (auto* menu = juce::Component::getCurrentlyModalComponent())
        for (auto* child : menu->getChildren())
            if (auto* handler = child->getAccessibilityHandler();
                handler != nullptr && handler->getTitle().isNotEmpty())
                rows.push_back(handler);
    return rows;
}

/** Whether a window of this process is there to hear of the pointer. */
bool isOverUs(juce::Point<int> onScreen)
{
    return juce::Desktop::getInstance().findComponentAt(onScreen) != nullptr;
}
} // namespace

void TestWindow::movePointer(Point onScreen)
{
    if (juce::Desktop::getMousePosition() == onScreen)
        return;

    // The window system tells of the move by and by: that must not come between the press and the release.
    // Painting keeps its connection talking.
    struct Listener : juce::MouseListener
    {
        void mouseMove(const juce::MouseEvent& event) override { last = event.getScreenPosition(); }

        void mouseEnter(const juce::MouseEvent& event) override { last = event.getScreenPosition(); }

        Point last{-1, -1};
    };

    Listener listener;
    auto& desktop = juce::Desktop::getInstance();
    desktop.addGlobalMouseListener(&listener);
    juce::Desktop::setMousePosition(onScreen);
    pumpUntil(
        [&]
        {
            content.repaint(0, 0, 1, 1);
            return listener.last == onScreen;
        },
        isOverUs(onScreen) ? pointerArrivesMillis : pointerLeavesMillis);
    desktop.removeGlobalMouseListener(&listener);
}

TestWindow::TestWindow(juce::Component& shown)
    : content(shown)
    , clock(juce::Time::currentTimeMillis())
{
    content.setTopLeftPosition(20, 40);
    content.addToDesktop(juce::ComponentPeer::windowHasTitleBar |
                         juce::ComponentPeer::windowAppearsOnTaskbar);
    content.setVisible(true);
    content.toFront(true);
    pumpUntil([&] { return peerOf(content).isFocused(); }, patienceMillis);
    // The pointer stays away from the controls until a test moves it.
    movePointer({0, 0});
}

TestWindow::~TestWindow()
{
    closeMenus();
    juce::ModifierKeys::currentModifiers = {};
    content.removeFromDesktop();
}

void TestWindow::pump(int millis)
{
    // Until a timer of that length has rung, and with it all that were due: on a busy machine they are late.
    struct Alarm : juce::Timer
    {
        void timerCallback() override { rang = true; }

        bool rang = false;
    };

    Alarm alarm;
    alarm.startTimer(millis);
    pumpUntil([&] { return alarm.rang; }, millis + patienceMillis);
}

void TestWindow::send(juce::Component& target, Point at, int buttonAndKeys)
{
    juce::ModifierKeys::currentModifiers = juce::ModifierKeys(buttonAndKeys);
    peerOf(target).handleMouseEvent(mouse, positionInPeer(target, at), juce::ModifierKeys::currentModifiers,
                                    pressure, orientation, ++clock);
}

void TestWindow::moveTo(juce::Component& target, Point at, int buttonAndKeys)
{
    // Whoever hovers does so with the pointer, too: tips ask where it is.
    if ((buttonAndKeys & juce::ModifierKeys::allMouseButtonModifiers) == 0)
        movePointer(target.localPointToGlobal(at));

    send(target, at, buttonAndKeys);
}

void TestWindow::press(juce::Component& target, Point at, int buttonAndKeys)
{
    // Menus look for the pointer itself: it goes along.
    movePointer(target.localPointToGlobal(at));
    const int keys = buttonAndKeys & ~juce::ModifierKeys::allMouseButtonModifiers;
    send(target, at, keys);
    send(target, at, buttonAndKeys);
}

void TestWindow::release(juce::Component& target, Point at, int keys)
{
    send(target, at, keys);
    juce::ModifierKeys::currentModifiers = {};
    pump();
}

void TestWindow::click(juce::Component& target, Point at, int buttonAndKeys)
{
    clock += betweenClicksMillis;
    press(target, at, buttonAndKeys);
    release(target, at, buttonAndKeys & ~juce::ModifierKeys::allMouseButtonModifiers);
}

void TestWindow::click(juce::Component& target, int buttonAndKeys)
{
    click(target, target.getLocalBounds().getCentre(), buttonAndKeys);
}

void TestWindow::doubleClick(juce::Component& target, Point at)
{
    clock += betweenClicksMillis;
    for (int i = 0; i < 2; ++i)
    {
        press(target, at);
        release(target, at);
    }
}

void TestWindow::drag(juce::Component& target, Point from, Point to, int buttonAndKeys)
{
    clock += betweenClicksMillis;
    press(target, from, buttonAndKeys);
    for (int step = 1; step <= dragSteps; ++step)
        moveTo(target, from + (to - from) * step / dragSteps, buttonAndKeys);
    release(target, to, buttonAndKeys & ~juce::ModifierKeys::allMouseButtonModifiers);
}

void TestWindow::wheel(juce::Component& target, Point at, float deltaY)
{
    clock += betweenClicksMillis;
    send(target, at, 0);
    peerOf(target).handleMouseWheel(mouse, positionInPeer(target, at), ++clock,
                                    {0.0f, deltaY, false, false, false});
    pump();
}

void TestWindow::key(const juce::KeyPress& key)
{
    peerOf(content).handleKeyPress(key);
    pump();
}

void TestWindow::type(const juce::String& text)
{
    for (const auto character : text)
        key(juce::KeyPress(static_cast<int>(character), {}, character));
}

void TestWindow::typeLine(const juce::String& text)
{
    type(text);
    key(juce::KeyPress::returnKey);
}

juce::Component* TestWindow::findWhere(const std::function<bool(juce::Component&)>& matches) const
{
    auto* shown = findIn(content, matches, true);
    return shown != nullptr ? shown : findIn(content, matches, false);
}

juce::Component* TestWindow::find(int id) const
{
    const juce::String text(id);
    return findWhere([&](juce::Component& c) { return c.getComponentID() == text; });
}

juce::Component* TestWindow::find(const juce::String& name) const
{
    return findWhere([&](juce::Component& c) { return c.getName() == name; });
}

juce::Component* TestWindow::findTitled(const juce::String& title) const
{
    return findWhere([&](juce::Component& c) { return c.getTitle() == title; });
}

juce::Image TestWindow::picture(juce::Component& component, float scale)
{
    return component.createComponentSnapshot(component.getLocalBounds(), true, scale);
}

bool samePicture(const juce::Image& a, const juce::Image& b)
{
    if (a.getBounds() != b.getBounds())
        return false;

    for (int y = 0; y < a.getHeight(); ++y)
        for (int x = 0; x < a.getWidth(); ++x)
            if (a.getPixelAt(x, y) != b.getPixelAt(x, y))
                return false;

    return true;
}

std::vector<PaintedText> TestWindow::texts(juce::Component& component)
{
    juce::Image image(juce::Image::RGB, component.getWidth(), component.getHeight(), true,
                      juce::SoftwareImageType());
    TextWatch watch(image);
    juce::Graphics g(watch);
    component.paintEntireComponent(g, true);
    return watch.texts();
}

bool TestWindow::menuIsOpen()
{
    return !menuRows().empty();
}

juce::StringArray TestWindow::menuTexts()
{
    pumpUntil([] { return menuIsOpen(); }, patienceMillis);
    juce::StringArray texts;
    for (auto* row : menuRows())
    {
        const bool enabled = row->getRole() == juce::AccessibilityRole::menuItem;
        texts.add(enabled ? row->getTitle() : "(" + row->getTitle() + ")");
    }
    return texts;
}

bool TestWindow::chooseFromMenu(const juce::String& text)
{
    pumpUntil([] { return menuIsOpen(); }, patienceMillis);
    for (auto* row : menuRows())
    {
        if (row->getTitle() != text)
            continue;

        // A menu follows the pointer itself, and takes no click in its first moments.
        constexpr int menuSettlesMillis = 300;
        const juce::Component::SafePointer<juce::Component> item(
            const_cast<juce::Component*>(&row->getComponent()));
        const auto middle = item->getLocalBounds().getCentre();
        movePointer(item->localPointToGlobal(middle));
        pump(menuSettlesMillis);
        if (item != nullptr)
            press(*item, middle);
        pump(menuSettlesMillis);
        juce::ModifierKeys::currentModifiers = {};
        if (item != nullptr)
            release(*item, middle);
        return pumpUntil([] { return !menuIsOpen(); }, patienceMillis);
    }
    return false;
}

void TestWindow::closeMenus()
{
    juce::PopupMenu::dismissAllActiveMenus();
    pumpUntil([] { return !menuIsOpen(); }, patienceMillis);
}

} // namespace quorel::test
