#include "CommonDialog.h"
#include "Dates.h"
#include "ErrorOf.h"
#include "Faults.h"
#include "FormTest.h"
#include "FullDisk.h"
#include "PageDevice.h"
#include "PlatformTest.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QGraphicsView>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>

namespace {

class PrintingTest : public NewUserTest
{
protected:
    PrintingTest()
    {
        printer_.reset();
        printer_.setDevice(recorder_);
        CommonDialog::setShowPrinterForTests({});
    }
    ~PrintingTest() override
    {
        faults::setObserver({});
        printer_.reset();
    }

    QStringList printed()
    {
        printer_.EndDoc();
        return recorder_->lines();
    }
    // What lies in the documents folder of the test's own home.
    QStringList stored() const
    {
        const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        EXPECT_TRUE(folder.startsWith(directory_.path())) << qPrintable(folder);
        return filesIn(folder);
    }
    static QStringList filesIn(const QString& folder)
    {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden);
    }

    // What the user does at the dialog or window that comes up next.
    static void atDialog(std::function<void(QDialog&)> act)
    {
        QTimer::singleShot(0, [act = std::move(act)] {
            auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
            act(*dialog);
            // A failed check must not wait for an answer for ever.
            if (dialog->isVisible())
                dialog->reject();
        });
    }
    static void key(Qt::Key key)
    {
        QWidget* const target = QApplication::focusWidget() ? QApplication::focusWidget()
                                                            : QApplication::activeModalWidget();
        QTest::keyClick(target, key);
    }

    Printer& printer_ = Printer::instance();
    std::shared_ptr<RecordingDevice> recorder_ = std::make_shared<RecordingDevice>();
};

QString outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished());
    return QString::fromUtf8(process.readAllStandardOutput());
}

// Whether something is written there on the sheet in view.
bool hasInk(const QDialog& window, const QRect& place)
{
    const QImage image = window.findChild<QGraphicsView*>()->grab(place).toImage();
    int ink = 0;
    for (int dot = 0; dot < image.width() * image.height(); ++dot)
        ink += qGray(image.pixel(dot % image.width(), dot / image.width())) < 100;
    return ink > 20 && ink < image.width() * image.height() / 2;
}

const std::vector<Page> Sheet{{{0, 0, 8, false, u"x"_s}}};

} // namespace

// The pages in tests/pages hold what lies within a line.
TEST_F(PrintingTest, TabBeyondThePositionGoesToItsColumnOfTheNextLine)
{
    const auto line = [this](int from, std::initializer_list<Printer::Item> items) {
        printer_.atX(from).print(items);
        return printed().join(u'|');
    };
    EXPECT_EQ(line(0, {u"Muito longo"_s, Tab{3}, u"b"_s, Tab{9}, u"c"_s}),
              u"0,0 8 Muito longo|141,184 8 b|564,184 8 c"_s);
    EXPECT_EQ(line(2000, {Tab{5}, u"a"_s}), u"282,184 8 a"_s);
    EXPECT_EQ(line(0, {Tab{5}, u""_s, Tab{5}, u"a"_s}), u"282,0 8 a"_s) << "just reached";
    for (const auto& [tab, x] : {std::pair(-3, u"0,0"_s), {164, u"282,0"_s}, {318, u"0,0"_s}})
        EXPECT_EQ(line(0, {Tab{tab}, u"a"_s}), x + u" 8 a"_s) << "the rest of the line's columns";
}

TEST_F(PrintingTest, ALineThatDoesNotFitOpensThePage)
{
    printer_.setFontSize(10);
    printer_.at(100, Printer::Height - 230).print(u"última"_s);
    printer_.atX(100).print({Tab{5}, u"primeira"_s, Tab{2}, u"segunda"_s});
    printer_.at(50, 99999).print(u"de várias\r\nlinhas\ta\r\n"_s);
    printer_.print(u"fim"_s);
    printer_.NewPage();
    EXPECT_EQ(printed(),
              (QStringList{u"100,16124 10 última"_s, u"--- page"_s, u"353,0 10 primeira"_s,
                           u"88,230 10 segunda"_s, u"--- page"_s, u"50,0 10 de várias"_s,
                           u"0,230 10 linhas a"_s, u"0,690 10 fim"_s}));
    // A font taller than the paper must not turn pages for ever.
    printer_.setFontSize(1000);
    printer_.print(u"A"_s);
    EXPECT_EQ(printed(), QStringList{u"0,0 1000 A"_s});
}

TEST_F(PrintingTest, AFaultLeavesTheDocumentOpenButAFailedEndDocDropsIt)
{
    printer_.print(u"antes"_s);
    faults::setObserver([](faults::Call) { throw RuntimeError(RuntimeError::PrinterFault); });
    EXPECT_EQ(errorOf([&] { printer_.print(u"falha"_s); }), 482);
    faults::setObserver({});
    EXPECT_EQ(printed(), QStringList{u"0,0 8 antes"_s});

    printer_.setDevice(std::make_shared<SystemPrinterDevice>(u"no such printer"_s));
    printer_.print(u"perdido"_s);
    EXPECT_EQ(errorOf([&] { printer_.EndDoc(); }), 482);
    printer_.setDevice(recorder_);
    printer_.print(u"novo"_s);
    EXPECT_EQ(printed(), QStringList{u"0,0 8 novo"_s});
}

TEST_F(PrintingTest, ThePdfHoldsItsTextsOnA4Pages)
{
    const QString path = directory_.filePath(u"ficha.pdf"_s);
    printer_.setDevice(std::make_shared<PdfDevice>(path));
    printer_.setDocumentName(u"Ficha de entrada"_s);
    printer_.print(QString(280, u'_'));
    printer_.at(100, 400).print(u"Praça da Sé, 1 - ação"_s);
    printer_.at(9000, 3000).print(u"Número muito comprido que passa da margem direita FIM"_s);
    printer_.at(8700, 1900).print(u"O.S: 0000012"_s);
    printer_.NewPage();
    printer_.print(u"Código"_s);
    printer_.EndDoc();
    const QString text = outputOf(u"pdftotext"_s, {u"-layout"_s, path, u"-"_s});
    const QRegularExpression sheets(
        u"Praça da Sé, 1 - ação *\\n.*O.S: 0000012\\n.*\\fCódigo\\n+\\f$"_s,
        QRegularExpression::DotMatchesEverythingOption);
    EXPECT_TRUE(text.contains(sheets)) << "a little beyond the edge is whole: " << qPrintable(text);
    EXPECT_FALSE(text.contains(u"FIM"_s)) << "clipped";
    const QString facts = outputOf(u"pdfinfo"_s, {path});
    EXPECT_TRUE(facts.contains(u"A4"_s) && facts.contains(u"Ficha de entrada"_s))
        << qPrintable(facts);
}

TEST_F(PrintingTest, APdfIsWholeOrLeavesWhatStoodThere)
{
    const QString path = directory_.filePath(u"a.pdf"_s);
    PdfDevice device(path);
    device.put(Sheet, u"a"_s);
    device.put(Sheet, u"a"_s);
    const QStringList both{u"a (2).pdf"_s, u"a.pdf"_s};
    EXPECT_EQ(filesIn(directory_.path()), both) << "never over the first";
    {
        const FullDisk full(1000);
        EXPECT_EQ(errorOf([&] { PdfDevice(path).put({{}, {}}, u"b"_s); }), 482);
    }
    EXPECT_TRUE(outputOf(u"pdfinfo"_s, {path}).contains(QRegularExpression(u"Pages: +1\\n"_s)));
    EXPECT_EQ(filesIn(directory_.path()), both);
    for (const QString& place : {directory_.filePath(u"no/a.pdf"_s), directory_.path()})
        EXPECT_EQ(errorOf([&] { PdfDevice(place).put(Sheet, {}); }), 482);
}

TEST_F(PrintingTest, WithoutADeviceThePdfGetsATellingNameInTheDocumentsFolder)
{
    Clock::setForTests(QDateTime(QDate(2024, 5, 12), QTime(14, 7, 9)));
    PdfDevice().put(Sheet, u" .Pedido 12/05: \"A*\" "_s);
    Clock::setForTests(std::nullopt);
    EXPECT_EQ(stored(), QStringList{u"Pedido 12-05- -A-- 2024-05-12 14-07-09.pdf"_s});
}

TEST_F(PrintingTest, ThePreviewPrintsOnEnterAndNotOnEsc)
{
    printer_.setDevice(std::make_shared<PreviewDevice>(recorder_));
    for (const Qt::Key answer : {Qt::Key_Escape, Qt::Key_Return}) {
        printer_.at(500, 0).print(u"folha"_s);
        printer_.NewPage();
        printer_.at(500, 850).print(u"segunda"_s);
        atDialog([answer](QDialog& window) {
            for (const Qt::Key turned : {Qt::Key_End, Qt::Key_Home}) {
                key(turned);
                EXPECT_EQ(hasInk(window, {70, 18, 300, 35}), turned == Qt::Key_Home);
            }
            key(answer);
        });
        EXPECT_EQ(errorOf([this] { printer_.EndDoc(); }) == 482, answer == Qt::Key_Escape);
        EXPECT_EQ(recorder_->documents().size(), answer == Qt::Key_Return ? 1U : 0U);
    }
}

TEST_F(PrintingTest, CancelledTheDialogKeepsThePrinterAndNeverAFileWrittenBefore)
{
    // Puts a sheet through what stands then; the answer is the note that told of it.
    const auto cancelled = [&](const std::shared_ptr<PageDevice>& last) {
        QString note;
        printer_.setDevice(last);
        atDialog([&](QDialog& dialog) {
            for (const QLabel* label : dialog.findChildren<QLabel*>())
                if (label->text().contains(u"Cancelar"_s))
                    note = label->text();
            key(Qt::Key_Escape);
        });
        CommonDialog().ShowPrinter(u"Recibo"_s);
        return note;
    };
    const auto put = [this] {
        auto device = printer_.device();
        if (const auto preview = std::dynamic_pointer_cast<PreviewDevice>(device))
            device = preview->inner();
        device->put(Sheet, u"Recibo"_s);
    };
    const auto queue = std::make_shared<SystemPrinterDevice>(u"Balcão"_s);
    EXPECT_TRUE(cancelled(queue).contains(u"Balcão"_s));
    EXPECT_EQ(printer_.device(), queue);
    // A file named without a folder, to be looked at first.
    atDialog([](QDialog& dialog) {
        dialog.findChild<QCheckBox*>()->setChecked(true);
        dialog.findChild<QLineEdit*>()->setText(u"meu recibo"_s);
        key(Qt::Key_Return);
    });
    CommonDialog().ShowPrinter(u"Recibo"_s);
    const auto chosen = printer_.device();
    put();
    EXPECT_EQ(stored(), QStringList{u"meu recibo.pdf"_s});
    for (const auto& last : {chosen, std::shared_ptr<PageDevice>()}) {
        EXPECT_TRUE(cancelled(last).contains(directory_.path()));
        put();
    }
    EXPECT_EQ(stored().size(), 3);
    EXPECT_FALSE(stored().contains(u"meu recibo (2).pdf"_s));
}

TEST_F(PrintingTest, TheDialogRefusesWhatCannotBeWrittenAndAsksBeforeReplacing)
{
    const QString taken = directory_.filePath(u"a.pdf"_s);
    PdfDevice(taken).put(Sheet, {});
    printer_.setDevice(nullptr);
    QStringList boxes;
    setMsgBoxForTests([&](const Box& box) {
        boxes += box.text;
        return boxes.size() < 4 ? Answer::No : Answer::Yes;
    });
    atDialog([&](QDialog& dialog) {
        for (const QString& path : {u"  "_s, directory_.filePath(u"no/a"_s), taken, taken}) {
            EXPECT_TRUE(dialog.isVisible());
            dialog.findChild<QLineEdit*>()->setText(path);
            dialog.accept();
        }
        EXPECT_FALSE(dialog.isVisible());
    });
    CommonDialog().ShowPrinter(u"Recibo"_s);
    setMsgBoxForTests({});
    const QString asked = u"O arquivo já existe. Quer substituir?"_s;
    EXPECT_EQ(boxes, (QStringList{u"Digite o nome do arquivo."_s,
                                  u"A pasta do arquivo não existe."_s, asked, asked}));
}
