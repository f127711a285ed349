#include "FormTest.h"

#include "Database.h"
#include "Dates.h"
#include "EventTransactions.h"
#include "FailingDisk.h"
#include "Faults.h"
#include "Funciones.h"
#include "GateFrames.h"
#include "HostPaths.h"
#include "Installation.h"
#include "Patience.h"
#include "ProfileFile.h"
#include "RuntimeError.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QMenu>
#include <QTableView>
#include <QTest>

#include <sqlite3.h>

void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

FormTest::FormTest() : printer_(std::make_shared<RecordingDevice>())
{
    qputenv("HOME", QFile::encodeName(home_.path()));
    setApplicationFolder(folder());
    layDownInstallation(folder(), false);
    Clock::setForTests(QDateTime(QDate(2026, 3, 9), QTime(14, 30)));
    Funciones::resetShared();
    Printer::instance().reset();
    Printer::instance().setDevice(printer_);
    CommonDialog::setShowPrinterForTests([](const QString&) {});
    setEndProgramForTests([this](EndReason reason) { ends_.push_back(reason); });
    setMsgBoxForTests([this](const Box& box) {
        if (expected_.empty()) {
            ADD_FAILURE() << "unexpected box: " << box.text.toStdString();
            return box.buttons == BoxButtons::Ok ? Answer::Ok : Answer::No;
        }
        const Expected next = expected_.front();
        expected_.pop_front();
        if (next.beginningOnly) {
            EXPECT_TRUE(box.text.startsWith(next.box.text)) << box.text.toStdString();
            return next.answer;
        }
        EXPECT_EQ(box.text, next.box.text);
        EXPECT_EQ(box.buttons, next.box.buttons);
        EXPECT_EQ(box.icon, next.box.icon);
        EXPECT_EQ(box.title, next.box.title);
        return next.answer;
    });
    setModalScriptForTests([](Form&) {});
}

FormTest::~FormTest()
{
    faults::setObserver({});
    for (const Expected& left : expected_)
        ADD_FAILURE() << "box never came: " << left.box.text.toStdString();
    setMsgBoxForTests([](const Box&) { return Answer::Ok; });
    FormRegistry::instance().clear();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    Funciones::resetShared();
    resetGateForTests();
    Database::dropIdle();
    Patience::setLimitForTests(std::nullopt);
    Clock::setForTests(std::nullopt);
    qputenv("HOME", homeBefore_);
}

void FormTest::setIni(const QString& section, const QString& key, const QString& value)
{
    ASSERT_TRUE(writeProfileString(section, key, value, iniFile()));
}

void FormTest::setCompany()
{
    for (const auto& [key, value] : {std::pair{u"Titulo"_s, u"Oficina"_s},
                                     {u"Endereco"_s, u"Rua A, 1"_s},
                                     {u"Email"_s, u"a@b.c"_s},
                                     {u"Telefone"_s, u"3333-4444"_s},
                                     {u"Site"_s, u"b.c"_s}})
        setIni(u"Configurar"_s, key, value);
}

QStringList FormTest::sql(const QString& file, const QString& statement) const
{
    QStringList rows;
    sqlite3* handle = nullptr;
    EXPECT_EQ(sqlite3_open_v2(file.toUtf8().constData(), &handle, SQLITE_OPEN_READWRITE, nullptr),
              SQLITE_OK);
    sqlite3_busy_timeout(handle, 5000);
    const auto collect = [](void* out, int, char** values, char**) {
        static_cast<QStringList*>(out)->append(values[0] ? QString::fromUtf8(values[0])
                                                         : u"NULL"_s);
        return 0;
    };
    char* message = nullptr;
    EXPECT_EQ(sqlite3_exec(handle, statement.toUtf8().constData(), collect, &rows, &message),
              SQLITE_OK)
        << (message ? message : "") << " in " << statement.toStdString();
    sqlite3_free(message);
    sqlite3_close(handle);
    return rows;
}

void FormTest::expectBox(const QString& text, Answer answer, BoxButtons buttons, BoxIcon icon,
                         const QString& title)
{
    expected_.push_back({{text, buttons, icon, title}, answer, false});
}

void FormTest::expectBoxBeginning(const QString& beginning, Answer answer)
{
    expected_.push_back({{beginning, BoxButtons::Ok, BoxIcon::Critical, {}}, answer, true});
}

void FormTest::onModal(std::function<void(Form&)> script)
{
    setModalScriptForTests(std::move(script));
}

QStringList FormTest::page(const QString& name)
{
    QFile file(QStringLiteral(VORBELO_SOURCE_DIR "/tests/pages/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll()).chopped(1).split(u'\n');
}

void FormTest::breakPrinter()
{
    Printer::instance().setDevice(std::make_shared<SystemPrinterDevice>(u"no such printer"_s));
}

void FormTest::failCall(int n, int number)
{
    callsLeft_ = n;
    failed_ = false;
    faults::setObserver([this, number](faults::Call) {
        if (--callsLeft_ == 0) {
            failed_ = true;
            throw RuntimeError(number);
        }
    });
}

bool FormTest::callFailed()
{
    faults::setObserver({});
    return failed_;
}

void FormTest::failEachCall(const std::function<void()>& prepare, const std::function<void()>& act,
                            const std::function<void(bool failed)>& check, int calls)
{
    failEach([this](int n) { failCall(n); }, [this] { return callFailed(); }, prepare, act, check,
             calls);
}

void FormTest::failEachWrite(const std::function<void()>& prepare, const std::function<void()>& act,
                             const std::function<void(bool failed)>& check, const char* file,
                             int refusals)
{
    unloadForms();
    FailingDisk disk;
    const auto arm = [&](int n) { disk.fillFrom(n, file, refusals); };
    const auto disarm = [&] {
        disk.empty();
        return FailingDisk::refused();
    };
    failEach(arm, disarm, prepare, act, check, 4);
}

void FormTest::failEachLock(const std::function<void()>& prepare, const std::function<void()>& act,
                            const std::function<void(bool failed)>& check, const char* file,
                            int refusals)
{
    unloadForms();
    FailingDisk disk;
    const auto arm = [&](int n) { disk.lockFrom(n, file, refusals); };
    const auto disarm = [&] {
        disk.empty();
        return FailingDisk::refused();
    };
    failEach(arm, disarm, prepare, act, check, 2);
}

// What a form still holds open lies on a good disk.
void FormTest::unloadForms()
{
    for (Form* open : FormRegistry::instance().loadedForms())
        if (open->name() != u"Form1principal"_s)
            open->unload();
    Funciones::resetShared(); // a form may leave its pair open
}

void FormTest::failEach(const std::function<void(int n)>& arm, const std::function<bool()>& disarm,
                        const std::function<void()>& prepare, const std::function<void()>& act,
                        const std::function<void(bool failed)>& check, int atLeast)
{
    setMsgBoxForTests([this](const Box& box) {
        boxes_ << box.title + u'|' + box.text.section(u'\n', 0, 0);
        return box.buttons == BoxButtons::YesNo ? Answer::Yes : Answer::Ok;
    });
    constexpr int Many = 1000;
    bool failed = true;
    int n = 0;
    while (failed && n < Many) {
        SCOPED_TRACE(++n);
        // The windows of the time before.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        prepare();
        boxes_.clear();
        arm(n);
        act();
        failed = disarm();
        EXPECT_TRUE(ends().empty());
        check(failed);
        if (HasFailure()) // each further one would fail alike
            return;
    }
    EXPECT_FALSE(failed);
    EXPECT_GT(n, atLeast) << "fewer than there must be";
}

void click(Control& button)
{
    auto* widget = qobject_cast<QAbstractButton*>(button.widget());
    ASSERT_TRUE(widget);
    widget->click();
    QCoreApplication::processEvents();
}

void click(Menu& entry)
{
    const QWidget* window = entry.form().window();
    ASSERT_TRUE(window);
    auto* action = window->findChild<QAction*>(entry.name());
    ASSERT_TRUE(action) << entry.name().toStdString();
    action->trigger();
    QCoreApplication::processEvents();
}

void type(TextBox& box, const QString& text)
{
    QWidget* widget = box.widget();
    ASSERT_TRUE(widget);
    QMetaObject::invokeMethod(widget, "selectAll");
    if (text.isEmpty())
        QTest::keyClick(widget, Qt::Key_Delete);
    for (const QChar character : text) {
        QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
        QCoreApplication::sendEvent(widget, &key);
    }
    QCoreApplication::processEvents();
}

void press(Control& control, Qt::Key key)
{
    QWidget* widget = control.widget();
    ASSERT_TRUE(widget);
    QTest::keyClick(widget, key);
    QCoreApplication::processEvents();
}

void click(FlexGrid& grid, int row)
{
    auto* view = qobject_cast<QTableView*>(grid.widget());
    ASSERT_TRUE(view);
    QCoreApplication::processEvents();
    if (row == 0) {
        emit view->horizontalHeader()->sectionClicked(0);
    } else {
        const QModelIndex index = view->model()->index(row - 1, 0);
        view->setCurrentIndex(index);
        emit view->clicked(index);
    }
    QCoreApplication::processEvents();
}

void enter(Control& control)
{
    QWidget* widget = control.widget();
    ASSERT_TRUE(widget);
    widget->window()->activateWindow();
    widget->setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
}

template <class Array, class State> static QString indexesOf(const Array& controls, State state)
{
    QStringList indexes;
    for (int index = 0; index <= controls.ubound(); ++index)
        if (controls.has(index) && (controls(index).*state)())
            indexes << QString::number(index);
    return indexes.join(u' ');
}

QString enabledOf(const ControlArray<CommandButton>& buttons)
{
    return indexesOf(buttons, &CommandButton::enabled);
}

QString lockedOf(const ControlArray<TextBox>& boxes)
{
    return indexesOf(boxes, &TextBox::locked);
}

QStringList gridRows(const FlexGrid& grid)
{
    QStringList rows;
    for (int row = 1; row < grid.Rows(); ++row) {
        QStringList cells;
        for (int col = 0; col < grid.Cols(); ++col)
            cells << grid.TextMatrix(row, col);
        rows << cells.join(u'|');
    }
    return rows;
}

void expectEasyToWalk(const Form& form)
{
    const QWidget* window = form.window();
    ASSERT_TRUE(window);
    const QWidget* before = nullptr;
    for (const QWidget* now = window->nextInFocusChain(); now != window;
         now = now->nextInFocusChain()) {
        if (now->focusPolicy() == Qt::NoFocus || now->isHidden() || now->focusProxy() ||
            now->objectName().startsWith(u"qt_"_s))
            continue;
        auto* seen = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(now));
        const QString name = seen->text(QAccessible::Name);
        // The toolkit lends the title of the group to those in it that have no name.
        const auto* group = qobject_cast<const QGroupBox*>(now->parent());
        EXPECT_TRUE(!now->accessibleName().isEmpty() ||
                    (!name.isEmpty() && !(group && group->title() == name)))
            << now->objectName().toStdString();
        if (!(now->focusPolicy() & Qt::TabFocus))
            continue;
        if (before && before->parent() == now->parent()) {
            const QPoint step = now->geometry().center() - before->geometry().center();
            const bool sameLine = std::abs(step.y()) < now->height() / 2;
            const bool nextColumn = now->geometry().left() > before->geometry().right();
            EXPECT_TRUE(sameLine ? step.x() > 0 : step.y() > 0 || nextColumn)
                << "from " << before->objectName().toStdString() << " to "
                << now->objectName().toStdString();
        }
        before = now;
    }
    for (const QTableView* grid : window->findChildren<QTableView*>())
        expectUseOfRoom(form, *grid);
}

void expectUseOfRoom(const Form& form, const QWidget& widget)
{
    const auto widthIn = [&](int width) {
        form.window()->resize(width, 900);
        QCoreApplication::processEvents();
        return widget.width();
    };
    EXPECT_LT(widthIn(1200), widthIn(1400)) << widget.objectName().toStdString();
}

void expectDownLeads(ControlArray<TextBox>& boxes, const FlexGrid& grid)
{
    for (int index = 0; index <= boxes.ubound(); ++index) {
        enter(boxes(index));
        press(boxes(index), Qt::Key_Down);
        EXPECT_TRUE(grid.widget()->hasFocus()) << index;
    }
}
