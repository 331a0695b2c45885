// The watermark editor's window, in the bundle that is installed, used as a person would.

#include "watermark/panel/watermark_editor.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/places.h"
#include "watermark/editor/editor_texts.h"
#include "watermark/editor/mark_geometry.h"
#include "watermark/editor/mark_values.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <cstring>
#include <functional>
#include <limits>

namespace {

const std::string kEditor = stagePath("plugins/TavroFeatures.plugin/Contents/PlugIns/WatermarkEditor.bundle");

const QString kMissing = QStringLiteral("STRING NOT FOUND");

/// The window while the editor shows it.
class Window {
public:
    explicit Window(QWidget* window) : window_(window) {}

    template <typename Control>
    Control* find(const char* name) const {
        auto* control = window_->findChild<Control*>(QLatin1String(name));
        if (control == nullptr) {
            ADD_FAILURE() << "no " << name;
            static Control* none = new Control;
            return none;
        }
        return control;
    }
    QList<QWidget*> all() const { return QList<QWidget*>{window_} + window_->findChildren<QWidget*>(); }
    QPushButton* button(const char* name) const { return find<QPushButton>(name); }
    int number(const char* name) const { return find<QSpinBox>(name)->value(); }
    void key(QWidget* target, int code, Qt::KeyboardModifiers modifiers, const QString& text = {}) const {
        QKeyEvent press(QEvent::KeyPress, code, modifiers, text);
        QApplication::sendEvent(target, &press);
    }
    void type(const QString& text) const {
        auto* field = find<QLineEdit>("text");
        field->selectAll();
        for (const QChar letter : text) {
            key(field, 0, Qt::NoModifier, QString(letter));
        }
    }
    QString notice() const { return find<QLabel>("notice")->text(); }
    QWidget* preview() const { return find<QWidget>("preview"); }
    void mouse(QEvent::Type type, QPointF at) const {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, at, preview()->mapToGlobal(at), button, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(preview(), &event);
    }
    /// Where the page's ink lies in the preview, as a rectangle.
    QRect ink() const {
        const QImage image = preview()->grab().toImage().convertToFormat(QImage::Format_RGB32);
        QRect all;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (pixel.red() > pixel.blue() + 60) {
                    all |= QRect(x, y, 1, 1);
                }
            }
        }
        return all;
    }
    void accept() const { button("ok")->click(); }

private:
    QWidget* window_;
};

class WatermarkEditor : public testing::Test {
protected:
    WatermarkEditor() {
        const auto path =
            CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, kEditor.c_str(), kCFStringEncodingUTF8));
        const auto url =
            CFRef<CFURLRef>::adopt(CFURLCreateWithFileSystemPath(nullptr, path.get(), kCFURLPOSIXPathStyle, true));
        bundle_ = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, url.get()));
        reinterpret_cast<InitializeCocoaProc>(function(CFSTR("InitializeCocoa")))();
        record.kind = kTextWatermark;
        SetText(record.text, "Draft");
        SetText(record.fontName, "LiberationSans");
        record.fontSize = 72;
        record.scale = 100;
        record.angle = 45;
        record.density = 100;
        record.wellColor = {1, 0, 0, 1};
        record.paperExtentA = 792;
        record.paperExtentB = 612;
    }
    void* function(CFStringRef name) const {
        void* found = CFBundleGetFunctionPointerForName(bundle_.get(), name);
        EXPECT_NE(found, nullptr);
        return found;
    }
    /// True when the edit was accepted. A user who leaves the window open is taken to cancel.
    bool edit(const std::function<void(const Window&)>& user) {
        bool came = false;
        QTimer::singleShot(0, [&] {
            auto* dialog = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            came = true;
            user(Window(dialog));
            if (dialog->isVisible()) {
                dialog->reject();
            }
        });
        const auto editWatermark = reinterpret_cast<EditWatermarkProc>(function(CFSTR("editWatermark")));
        const SInt32 status = editWatermark(&record, 0, nullptr, 0);
        EXPECT_TRUE(came);
        return status == 0;
    }

    WatermarkRecord record = {};

private:
    CFRef<CFBundleRef> bundle_;
};

TEST_F(WatermarkEditor, ANewTextIsPlacedInTheMiddle) {
    record = {};
    record.paperExtentA = 792;
    record.paperExtentB = 612;
    EXPECT_TRUE(edit([](const Window& window) {
        EXPECT_FALSE(window.button("ok")->isEnabled());
        EXPECT_FALSE(window.notice().isEmpty());
        window.type(QStringLiteral("Draft"));
        EXPECT_TRUE(window.button("ok")->isEnabled());
        window.accept();
    }));
    EXPECT_STREQ(record.text, "Draft");
    EXPECT_EQ(record.kind, kTextWatermark);
    EXPECT_FLOAT_EQ(record.fontColor.red, 0.75F);
    EXPECT_FLOAT_EQ(record.fontColor.blue, 1.0F);
    // The place of the default watermark of that text, whose font has the same advances.
    EXPECT_NEAR(record.xPosition, 280.627441, 0.1);
    EXPECT_NEAR(record.yPosition, 311.049927, 0.1);
}

TEST_F(WatermarkEditor, CancelChangesNothing) {
    const WatermarkRecord before = record;
    EXPECT_FALSE(edit([](const Window& window) {
        window.type(QStringLiteral("Other"));
        window.find<QSpinBox>("angle")->setValue(10);
        window.button("cancel")->setFocus();
        window.key(window.button("cancel"), Qt::Key_Return, Qt::NoModifier);
    }));
    EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0);
}

TEST_F(WatermarkEditor, EveryStepIsUndoneAndRedone) {
    EXPECT_TRUE(edit([](const Window& window) {
        EXPECT_FALSE(window.button("undo")->isEnabled());
        window.type(QStringLiteral("Secret"));
        window.find<QSpinBox>("density")->setValue(40);
        window.find<QComboBox>("units")->setCurrentIndex(1);
        window.find<QDoubleSpinBox>("xOffset")->setValue(25.4);
        for (int step = 0; step < 4; ++step) {
            ASSERT_TRUE(window.button("undo")->isEnabled()) << step;
            window.button("undo")->click();
        }
        EXPECT_FALSE(window.button("undo")->isEnabled()) << "the letters of a text are one step";
        EXPECT_EQ(window.find<QLineEdit>("text")->text(), QStringLiteral("Draft"));
        EXPECT_EQ(window.number("density"), 100);
        for (int step = 0; step < 4; ++step) {
            window.button("redo")->click();
        }
        EXPECT_FALSE(window.button("redo")->isEnabled());
        window.accept();
    }));
    EXPECT_STREQ(record.text, "Secret");
    EXPECT_EQ(record.density, 40);
    EXPECT_EQ(record.units, 1);
    EXPECT_FLOAT_EQ(record.xOffset, 72);
    EXPECT_FLOAT_EQ(record.fontColor.green, 0.6F);
}

TEST_F(WatermarkEditor, NumbersAreTypedDigitByDigit) {
    EXPECT_TRUE(edit([](const Window& window) {
        window.find<QComboBox>("units")->setCurrentIndex(1);
        const auto type = [&window](QAbstractSpinBox* field, const QString& text) {
            field->selectAll();
            for (const QChar digit : text) {
                window.key(field, 0, Qt::NoModifier, QString(digit));
            }
        };
        type(window.find<QDoubleSpinBox>("xOffset"), QStringLiteral("15.5"));
        type(window.find<QDoubleSpinBox>("yOffset"), QStringLiteral("-0,4"));  // of other countries
        type(window.find<QSpinBox>("angle"), QStringLiteral("-30"));
        window.accept();
    }));
    EXPECT_NEAR(record.xOffset, 15.5 * 72 / 25.4, 1e-4);
    EXPECT_NEAR(record.yOffset, -0.4 * 72 / 25.4, 1e-4);
    EXPECT_EQ(record.angle, -30);
}

TEST_F(WatermarkEditor, TheMarkIsDraggedOnThePage) {
    EXPECT_TRUE(edit([](const Window& window) {
        const QSizeF size = window.preview()->size();
        const PageView view({612, 792}, size.width(), size.height(), 12);
        const PagePoint middle = view.toView({306, 396});
        const QRect before = window.ink();
        EXPECT_NEAR(before.center().x(), middle.x, 12);
        EXPECT_NEAR(before.center().y(), middle.y, 12);

        const QPointF from(middle.x, middle.y);
        const QPointF by(50, 80);
        window.mouse(QEvent::MouseButtonPress, from);
        window.mouse(QEvent::MouseMove, from + by / 2);
        window.mouse(QEvent::MouseMove, from + by);
        window.mouse(QEvent::MouseButtonRelease, from + by);
        const QRect after = window.ink();
        EXPECT_NEAR(after.center().x() - before.center().x(), by.x(), 2);
        EXPECT_NEAR(after.center().y() - before.center().y(), by.y(), 2);
        EXPECT_NEAR(window.find<QDoubleSpinBox>("xOffset")->value(), by.x() / view.scale() / 72, 0.01);
        EXPECT_NEAR(window.find<QDoubleSpinBox>("yOffset")->value(), -by.y() / view.scale() / 72, 0.01);

        // A press beside the mark takes nothing along; a whole drag is one step.
        window.mouse(QEvent::MouseButtonPress, QPointF(view.left() + 3, view.top() + 3));
        window.mouse(QEvent::MouseMove, from);
        window.mouse(QEvent::MouseButtonRelease, from);
        EXPECT_EQ(window.ink(), after);
        window.button("undo")->click();
        EXPECT_FALSE(window.button("undo")->isEnabled());
        EXPECT_EQ(window.ink(), before);

        window.key(window.preview(), Qt::Key_Up, Qt::ShiftModifier);
        window.key(window.preview(), Qt::Key_Left, Qt::NoModifier);
        window.accept();
    }));
    EXPECT_FLOAT_EQ(record.xOffset, -1);
    EXPECT_FLOAT_EQ(record.yOffset, 10);
}

TEST_F(WatermarkEditor, EveryPageIsShownWithTheMarkInItsMiddle) {
    edit([](const Window& window) {
        auto* pages = window.find<QComboBox>("page");
        ASSERT_EQ(pages->count(), 5);
        for (int page = 0; page < pages->count(); ++page) {
            pages->setCurrentIndex(page);
            const QRect ink = window.ink();
            ASSERT_FALSE(ink.isEmpty());
            EXPECT_NEAR(ink.center().x(), window.preview()->width() / 2, 12) << page;
            EXPECT_NEAR(ink.center().y(), window.preview()->height() / 2, 12) << page;
        }
        EXPECT_FALSE(window.button("undo")->isEnabled()) << "what is shown is no matter of the watermark";
    });
}

TEST_F(WatermarkEditor, FontsAreThoseThatCanBeEmbedded) {
    SetText(record.fontName, "NoSuchFont-Regular");
    EXPECT_TRUE(edit([](const Window& window) {
        EXPECT_TRUE(window.notice().contains(QStringLiteral("NoSuchFont-Regular")));
        EXPECT_FALSE(window.button("ok")->isEnabled());
        auto* families = window.find<QComboBox>("family");
        // What cannot be embedded is to be seen with the reason, but not to be chosen.
        const QModelIndex postScript = families->model()->index(families->findText(QStringLiteral("C059")), 0);
        EXPECT_FALSE(postScript.flags() & Qt::ItemIsEnabled);
        EXPECT_FALSE(postScript.data(Qt::ToolTipRole).toString().isEmpty());
        families->setCurrentText(QStringLiteral("DejaVu Sans"));
        window.find<QComboBox>("style")->setCurrentText(QStringLiteral("Bold"));
        EXPECT_EQ(window.notice(), QString());
        EXPECT_TRUE(window.button("ok")->isEnabled());
        window.accept();
    }));
    EXPECT_STREQ(record.fontName, "DejaVuSans-Bold");
}

TEST_F(WatermarkEditor, APictureIsAWatermarkToo) {
    const TemporaryFolder folder;
    const std::string path = folder / "stamp.png";
    QImage picture(200, 100, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(QString::fromStdString(path)));
    record.kind = kImageWatermark;
    record.angle = 0;
    record.text[0] = '\0';
    SetText(record.fileName, "stamp.png");
    SetText(record.filePath, path);
    WatermarkRecord missing = record;
    EXPECT_TRUE(edit([](const Window& window) {
        const QSizeF size = window.preview()->size();
        const double scale = PageView({612, 792}, size.width(), size.height(), 12).scale();
        EXPECT_NEAR(window.ink().width(), 200 * scale, 2);
        EXPECT_NEAR(window.ink().height(), 100 * scale, 2);
        window.accept();
    }));
    EXPECT_DOUBLE_EQ(record.xPosition, 206);
    EXPECT_DOUBLE_EQ(record.yPosition, 346);

    SetText(missing.filePath, folder / "gone.png");
    record = missing;
    EXPECT_TRUE(edit([](const Window& window) {
        EXPECT_FALSE(window.notice().isEmpty());
        EXPECT_FALSE(window.button("ok")->isEnabled());
        window.find<QRadioButton>("kindText")->setChecked(true);
        window.type(QStringLiteral("Words"));
        window.accept();
    }));
    EXPECT_STREQ(record.text, "Words");
    EXPECT_STREQ(record.fileName, "") << "stored, it would be taken for a picture";
}

TEST_F(WatermarkEditor, ARecordOutOfItsLimitsIsShown) {
    record.angle = 2147483647;
    record.density = -5;
    record.scale = 0;
    record.fontSize = 100000;
    record.units = 77;
    record.xOffset = std::numeric_limits<float>::quiet_NaN();
    record.paperExtentA = -1;
    EXPECT_TRUE(edit([](const Window& window) {
        auto* text = window.find<QLineEdit>("text");
        text->selectAll();
        window.key(text, 0, Qt::NoModifier, QString(511, u'x'));
        window.key(text, 0, Qt::NoModifier, QStringLiteral("y"));
        EXPECT_EQ(text->text(), QString(511, u'x')) << "what does not fit is not taken";
        window.accept();
    }));
    EXPECT_EQ(record.text, std::string(511, 'x'));
    EXPECT_EQ(record.angle, 127);
    EXPECT_EQ(record.density, 0);
    EXPECT_EQ(record.scale, kSmallestScale);
    EXPECT_EQ(record.fontSize, kLargestFont);
    EXPECT_EQ(record.units, 0);
    EXPECT_EQ(record.xOffset, 0);
}

TEST_F(WatermarkEditor, EveryControlIsNamedAndReachedByKeyboard) {
    edit([](const Window& window) {
        for (const char* name : {"kindText", "kindPicture", "text", "family", "style", "fontSize", "color", "density",
                                 "angle", "scale", "xOffset", "yOffset", "units", "center", "page", "preview"}) {
            const auto* control = window.find<QWidget>(name);
            EXPECT_FALSE(control->toolTip().isEmpty()) << name;
            EXPECT_TRUE(control->focusPolicy() & Qt::TabFocus) << name;
        }
        for (const char* name : {"text", "family", "style", "fontSize", "color", "density", "angle", "scale", "xOffset",
                                 "yOffset", "units", "page", "preview"}) {
            EXPECT_FALSE(window.find<QWidget>(name)->accessibleName().isEmpty()) << name;
        }
    });
}

TEST_F(WatermarkEditor, EveryTextIsThere) {
    edit([](const Window& window) {
        for (const QWidget* control : window.all()) {
            for (const char* property : {"text", "toolTip", "suffix", "windowTitle", "accessibleName"}) {
                EXPECT_NE(control->property(property).toString(), kMissing) << control->objectName().toStdString();
            }
            if (const auto* menu = dynamic_cast<const QComboBox*>(control)) {
                EXPECT_EQ(menu->findText(kMissing), -1) << menu->objectName().toStdString();
            }
        }
        for (int refusal = 1; refusal <= static_cast<int>(FontRefusal::bitmapsOnly); ++refusal) {
            EXPECT_NE(EditorText(RefusalKey(static_cast<FontRefusal>(refusal))), kMissing) << refusal;
        }
        for (const char* key : {"Color Title", "Picture Title", "Picture Files", "Font Stands In", "Picture Missing"}) {
            EXPECT_NE(EditorText(key), kMissing) << key;
        }
    });
}

}  // namespace
