// SPDX-License-Identifier: GPL-3.0-or-later
// The controls by themselves in a real window, under mouse and keyboard.
#include "EditorRig.h"

#include "ui/EditorColours.h"
#include "ui/widgets/meterHorizontal.h"
#include "ui/widgets/myButton1.h"
#include "ui/widgets/myKnob.h"
#include "ui/widgets/myLabelB.h"
#include "ui/widgets/myLabelFont.h"
#include "ui/widgets/myOnOff.h"
#include "ui/widgets/mySlider2.h"

namespace quorel::test
{

namespace
{
constexpr int pan = layerParameter(0, layerSlot::pan);
constexpr int solo = layerParameter(0, layerSlot::solo);
constexpr float tolerance = 1e-5f;

/** A page as the editor's are, with controls laid out by the test. */
class Bench : public ControlPage
{
public:
    explicit Bench(EditorRig& rig)
        : ControlPage(rig.processor, rig.host, rig.images)
    {
        setSize(400, 300);
        setWantsKeyboardFocus(true);
    }

    void refresh() override {}

    void buttonClicked(juce::Button* button) override
    {
        clicks.add(button->isDown() ? "down" : "up");
        ControlPage::buttonClicked(button);
    }

    juce::StringArray clicks;
};

class WidgetTest : public testing::Test
{
protected:
    void show(juce::Component& widget) { bench.addAndMakeVisible(widget); }

    static juce::Image frameOf(const CBitmap& film, int frames, int frame)
    {
        const int height = film.getHeight() / frames;
        juce::Image picture(juce::Image::ARGB, film.getWidth(), height, true);
        juce::Graphics g(picture);
        film.draw(g, picture.getBounds().toFloat(), {0, frame * height, film.getWidth(), height});
        return picture;
    }

    static int ink(const juce::Image& picture, juce::Rectangle<int> area)
    {
        int pixels = 0;
        for (int y = area.getY(); y < area.getBottom(); ++y)
            for (int x = area.getX(); x < area.getRight(); ++x)
                pixels += picture.getPixelAt(x, y).getAlpha() > 64 ? 1 : 0;
        return pixels;
    }

    EditorRig rig;
    Bench bench{rig};
};

} // namespace

TEST_F(WidgetTest, KnobFollowsEveryGestureAndTellsScreenReaders)
{
    myKnob knob({40, 40, 0, 0}, &bench, pan, &rig.images.knobPan, rig.processor);
    show(knob);
    TestWindow window(bench);
    const juce::Point<int> middle{23, 23};
    knob.setDoubleClickReturnValue(true, 0.5);

    const auto dragUp = [&](int pixels, int keys)
    {
        knob.setValue(0.5, juce::dontSendNotification);
        window.drag(knob, middle, middle.translated(0, -pixels), TestWindow::leftButton + keys);
        return rig.get(pan);
    };
    const GestureCount gestures(rig.processor);
    // 250 pixels are the whole range.
    EXPECT_NEAR(dragUp(25, 0), 0.6f, tolerance);
    EXPECT_NEAR(dragUp(-50, 0), 0.3f, tolerance);
    EXPECT_NEAR(dragUp(25, TestWindow::shift), 0.51f, tolerance);
    EXPECT_EQ(gestures.begun, 3);
    EXPECT_EQ(gestures.ended, 3);

    knob.setValue(0.2);
    window.doubleClick(knob, middle);
    EXPECT_FLOAT_EQ(rig.get(pan), 0.5f);
    window.wheel(knob, middle, 0.5f);
    EXPECT_NEAR(rig.get(pan), 0.575f, tolerance);

    // The keyboard is the presets' until the user tabs to the knob.
    window.click(knob, middle);
    EXPECT_FALSE(knob.hasKeyboardFocus(true));
    knob.grabKeyboardFocus();
    knob.setValue(0.5);
    window.key(juce::KeyPress::upKey);
    EXPECT_NEAR(rig.get(pan), 0.51f, tolerance);
    window.key(juce::KeyPress::leftKey);
    EXPECT_NEAR(rig.get(pan), 0.5f, tolerance);
    EXPECT_TRUE(rig.processor.getSession().isEdited());

    EXPECT_EQ(knob.getAccessibilityHandler()->getTitle(), "Layer1 Pan");
    auto* spoken = knob.getAccessibilityHandler()->getValueInterface();
    EXPECT_EQ(spoken->getCurrentValueAsString(), "0");
    spoken->setValue(0.25);
    EXPECT_EQ(rig.get(pan), 0.25f);
}

TEST_F(WidgetTest, ValuesChooseFrames)
{
    myKnob knob({0, 0, 0, 0}, &bench, pan, &rig.images.knobPan, rig.processor);
    mySlider2 fader({100, 0, 0, 0}, &bench, slot::multiFader, &rig.images.easyFader, 82, rig.processor);
    const std::pair<double, int> knobFrames[] = {{0.0, 0}, {0.5, 68}, {0.999, 135}, {1.0, 136}};

    for (const auto& [value, frame] : knobFrames)
    {
        knob.setValue(value, juce::dontSendNotification);
        EXPECT_TRUE(samePicture(TestWindow::picture(knob), frameOf(rig.images.knobPan, 137, frame))) << value;
    }
    fader.setValue(1.0, juce::dontSendNotification);
    EXPECT_TRUE(samePicture(TestWindow::picture(fader), frameOf(rig.images.easyFader, 82, 81)));
}

TEST_F(WidgetTest, MeterShowsDecibelsAndOverload)
{
    meterHorizontal meter({40, 40, 59, 8});
    const auto colour = [&](int x, float level)
    {
        meter.right = level;
        meter.follow();
        TestWindow::pump(120);
        return TestWindow::picture(meter).getPixelAt(x, 6);
    };
    // 57 pixels for 70 dB: -20 dB ends after 40 of them.
    EXPECT_EQ(colour(40, 0.1f), juce::Colour(0xff111112));
    EXPECT_EQ(colour(40, 0.11f), colours::amber);
    // The last two pixels are for what is over.
    EXPECT_EQ(colour(57, 0.999f), juce::Colour(0xff111112));
    EXPECT_EQ(colour(57, 1.0f), juce::Colour(0xffc30000));
}

TEST_F(WidgetTest, KnobCanGoWhileItsMenuIsOpen)
{
    auto knob = std::make_unique<myKnob>(juce::Rectangle<int>(40, 40, 0, 0), &bench, pan, &rig.images.knobPan,
                                         rig.processor);
    show(*knob);
    TestWindow window(bench);
    window.click(*knob, TestWindow::rightButton);
    ASSERT_FALSE(window.menuTexts().isEmpty());
    const float before = rig.get(pan);
    knob.reset();
    window.chooseFromMenu("Set To Maximum");
    TestWindow::closeMenus();
    EXPECT_EQ(rig.get(pan), before);
}

TEST_F(WidgetTest, ButtonsActWhenTheMouseGoesDown)
{
    myOnOff toggle({40, 40, 0, 0}, &bench, solo, &rig.images.onOff, rig.processor);
    myButton1 note({100, 40, 0, 0}, &bench, &rig.images.iconNote);
    show(toggle);
    show(note);
    TestWindow window(bench);

    window.press(toggle, {5, 5});
    EXPECT_EQ(rig.get(solo), 1.0f);
    window.release(toggle, {5, 5});
    window.click(toggle);
    EXPECT_EQ(rig.get(solo), 0.0f);

    bench.clicks.clear();
    window.press(note, note.getLocalBounds().getCentre());
    EXPECT_EQ(bench.clicks.joinIntoString(" "), "down");
    // The release counts wherever it comes.
    window.release(note, {100, 5});
    EXPECT_EQ(bench.clicks.joinIntoString(" "), "down up");
    note.grabKeyboardFocus();
    window.key(juce::KeyPress::returnKey);
    TestWindow::pump(300);
    EXPECT_EQ(bench.clicks.joinIntoString(" "), "down up down up");
}

TEST_F(WidgetTest, BitmapFontsHaveBlanksAndTheTextsColour)
{
    // A blank draws nothing and takes its place.
    const int step = rig.images.textStripA.getWidth() - 4;
    myLabelB label({0, 0, 100, 20}, "W W", &rig.images.textStripA);
    const auto picture = TestWindow::picture(label);
    EXPECT_GT(ink(picture, {0, 0, step, 20}), 0);
    EXPECT_EQ(ink(picture, {step + 2, 0, step - 2, 20}), 0);
    EXPECT_GT(ink(picture, {2 * step, 0, step, 20}), 0);

    // The colour is the text's own, whatever the strip's.
    myLabelFont red({0, 0, 50, 10}, "VOL", &rig.images.labelTextStrip, juce::Colours::red);
    const auto small = TestWindow::picture(red);
    EXPECT_GT(ink(small, small.getBounds()), 0);
    for (int x = 0; x < small.getWidth(); ++x)
        for (int y = 0; y < small.getHeight(); ++y)
            EXPECT_EQ(small.getPixelAt(x, y).getGreen(), 0);
}

TEST_F(WidgetTest, TallLabelsHoldSmallLines)
{
    juce::Label label({}, "a long text that needs more than one line");
    label.setSize(60, 40);
    const auto picture = TestWindow::picture(label);
    EXPECT_GT(ink(picture, {0, 0, 60, 10}), 0);
    EXPECT_GT(ink(picture, {0, 12, 60, 10}), 0);
    label.setText("short", juce::dontSendNotification);
    EXPECT_EQ(ink(TestWindow::picture(label), {0, 20, 60, 20}), 0);
}

} // namespace quorel::test
