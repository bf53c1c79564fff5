// A stand-in input device for tests that run the real window in a process of its own: loaded by Qt
// as a generic input plugin (QT_QPA_GENERIC_PLUGINS=zqwindowdriver), it does what a user would, by
// events only, and tells the test on standard error when it has:
//   ZQ_DRIVER_ANSWER=Open        clicks the button of that text in the first message box shown
//   ZQ_DRIVER_TYPE=txtDial_3=123 types the text into that line edit once the window is up
#include <QApplication>
#include <QGenericPlugin>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>

#include <cstdio>

namespace {

void tell(const QString& what) {
    std::fprintf(stderr, "zq-driver: %s\n", what.toLocal8Bit().constData());
    std::fflush(stderr);
}

class WindowDriver : public QObject {
public:
    WindowDriver() {
        answer_ = qEnvironmentVariable("ZQ_DRIVER_ANSWER");
        const QString typing = qEnvironmentVariable("ZQ_DRIVER_TYPE");
        target_ = typing.section(QLatin1Char('='), 0, 0);
        text_ = typing.section(QLatin1Char('='), 1);
        auto* timer = new QTimer(this);
        connect(timer, &QTimer::timeout, this, &WindowDriver::step);
        timer->start(20);
    }

private:
    void step() {
        // Told once the box has gone and the program has gone on from its answer.
        if (!answered_.isEmpty() && !QApplication::activeModalWidget()) {
            tell(QStringLiteral("answered ") + answered_);
            answered_.clear();
        }
        if (!answer_.isEmpty()) {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                for (QAbstractButton* button : box->buttons())
                    if (button->text() == answer_) {
                        answered_ = answer_;
                        answer_.clear();
                        button->click();
                        return;
                    }
            }
        }
        if (target_.isEmpty() || QApplication::activeModalWidget()) return;
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (!qobject_cast<QMainWindow*>(top) || !top->isVisible()) continue;
            auto* edit = top->findChild<QLineEdit*>(target_);
            if (!edit) continue;
            // The page the box is on comes to the front first, as a click on its tab would bring it.
            for (QWidget* page = edit; page; page = page->parentWidget())
                if (auto* tabs = qobject_cast<QTabWidget*>(
                        page->parentWidget() ? page->parentWidget()->parentWidget() : nullptr);
                    tabs && tabs->indexOf(page) >= 0)
                    tabs->setCurrentWidget(page);
            for (const QChar c : text_) {
                const int key = c.toUpper().unicode(); // Qt's key codes for ASCII
                QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(c));
                QApplication::sendEvent(edit, &press);
                QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, QString(c));
                QApplication::sendEvent(edit, &release);
            }
            tell(QStringLiteral("typed into %1: %2").arg(target_, edit->text()));
            target_.clear();
            return;
        }
    }

    QString answer_, answered_, target_, text_;
};

} // namespace

class WindowDriverPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "windowdriver.json")
public:
    QObject* create(const QString& key, const QString&) override {
        return key == QLatin1String("zqwindowdriver") ? new WindowDriver : nullptr;
    }
};

#include "windowdriver.moc"
