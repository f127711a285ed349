#include "Application.h"
#include "Buscacli.h"
#include "EventTransactions.h"
#include "Form1Cli.h"
#include "Form1Pec.h"
#include "Form1pecabusca.h"
#include "Form1pecavenda.h"
#include "Form1principal.h"
#include "FormRegistry.h"
#include "Funciones.h"
#include "HostPaths.h"
#include "Installation.h"
#include "MsgBox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QStandardPaths>
#include <QTableView>

#include <unistd.h>

#include <chrono>
#include <random>

// One station of several over one shared file: works at the forms at random, as clerks do, and
// tells each thing that it stored and each stock that it saw, a line each, parted by tabs.
//
//   new KIND NAME VALUES...     set KIND NAME FIELD OLD NEW     gone KIND NAME VALUES...
//   see|stock CODE PIECES FROM TO (when, at the least and at the most)
//   sold CODE DESCRIPTION PIECES     left LINES     refused     asked     box TEXT

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int SoldParts = 6; // the first of the catalogue; they are never deleted

std::mt19937 chance;
QString station;
Answer lastAnswer = Answer::Ok;

int below(qsizetype limit)
{
    return static_cast<int>(chance() % static_cast<unsigned>(limit));
}

void say(const QStringList& words)
{
    const QByteArray line = words.join(u'\t').toUtf8() + '\n';
    if (write(STDOUT_FILENO, line.constData(), static_cast<std::size_t>(line.size())) < 0)
        std::abort();
}

QString now()
{
    return QString::number(std::chrono::steady_clock::now().time_since_epoch().count());
}

QString newText()
{
    static int texts = 0;
    return station + QString::number(++texts);
}

// Time for the others.
void pause()
{
    usleep(static_cast<useconds_t>(below(8000)));
}

void click(CommandButton& button)
{
    qobject_cast<QAbstractButton*>(button.widget())->click();
    QCoreApplication::processEvents();
}

Answer answer(const Box& box)
{
    if (box.text.startsWith(u"Número de Cadastro já existe")) {
        say({u"asked"_s});
        return lastAnswer = below(2) == 0 ? Answer::Yes : Answer::No;
    }
    if (box.text != u"Uso interno da oficina ?" && !box.text.startsWith(u"Deseja Realmente"))
        say({u"box"_s, box.text.simplified()});
    return box.buttons == BoxButtons::YesNo ? Answer::Yes : Answer::Ok;
}

// The orders, or the parts: what the two forms have alike.
struct Records
{
    QString kind;
    Form& window;
    ControlArray<CommandButton>& Command1;
    ControlArray<TextBox>& Text1;
    TextBox& Text2;
    int name; // the box whose text tells a record for ever
    int number;
    std::vector<int> boxes; // those that are edited
};

Records orders()
{
    auto& shown = form<Form1Cli>();
    return {u"order"_s, shown, shown.Command1, shown.Text1, shown.Text2, 0, 13, {1, 2, 5, 11}};
}

Records parts()
{
    auto& shown = form<Form1Pec>();
    return {u"part"_s, shown, shown.Command1, shown.Text1, shown.Text2, 1, 3, {0, 4}};
}

class Desk
{
public:
    explicit Desk(Records records) : form_(std::move(records))
    {
        form_.window.show();
        click(form_.Command1(12));
        for (int row = form_.Text1(16).text().toInt(); row > 0; --row) {
            numbers_ << form_.Text1(form_.number).text();
            click(form_.Command1(11));
        }
    }
    ~Desk() { form_.window.unload(); }
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    void doSomething()
    {
        constexpr int Fewest = 8;
        constexpr int Most = 14;
        const int choice = below(6);
        if (numbers_.size() < Fewest || (choice == 0 && numbers_.size() < Most))
            add();
        else if (choice == 1)
            remove();
        else
            edit();
    }

private:
    TextBox& box(size_t field) { return form_.Text1(form_.boxes[field]); }
    QString name() { return form_.Text1(form_.name).text(); }
    QStringList told(const QString& what)
    {
        QStringList words{what, form_.kind, name()};
        for (size_t field = 0; field < form_.boxes.size(); ++field)
            words << box(field).text();
        return words;
    }

    void show()
    {
        if (below(2) == 0 || numbers_.isEmpty()) {
            for (int step = below(4); step >= 0; --step)
                click(form_.Command1(10 + below(4)));
        } else {
            form_.Text2.setText({});
            form_.Text2.setText(numbers_[below(numbers_.size())]);
        }
        pause();
    }

    bool save()
    {
        pause();
        click(form_.Command1(1));
        // The form stays as it was where the save was refused.
        const bool isSaved = !form_.Command1(1).enabled();
        if (!isSaved)
            say({u"refused"_s});
        return isSaved;
    }

    void add()
    {
        click(form_.Command1(0));
        form_.Text1(form_.name).setText(newText());
        for (size_t field = 0; field < form_.boxes.size(); ++field)
            box(field).setText(newText());
        const QStringList stored = told(u"new"_s);
        lastAnswer = Answer::No;
        for (int tries = 4; tries > 0 && lastAnswer == Answer::No; --tries) {
            if (save()) {
                say(stored);
                numbers_ << form_.Text1(form_.number).text();
                return;
            }
            // The box of the number stands open and empty.
            const int last = numbers_.isEmpty() ? 0 : numbers_.back().toInt();
            form_.Text1(form_.number).setText(u"%1"_s.arg(last + 1 + below(3), 7, 10, QChar(u'0')));
        }
        click(form_.Command1(9));
    }

    void edit()
    {
        show();
        click(form_.Command1(2));
        QList<QStringList> stored;
        for (int times = 1 + below(2); times > 0; --times) {
            const int field = below(static_cast<qsizetype>(form_.boxes.size()));
            TextBox& edited = box(static_cast<size_t>(field));
            const QString text = newText();
            stored << QStringList{u"set"_s,      form_.kind, name(), QString::number(field),
                                  edited.text(), text};
            edited.setText(text);
        }
        const bool counts = name().startsWith(u"peca") && below(3) == 0;
        if (counts)
            form_.Text1(2).setText(QString::number(1000 + below(9000)));
        const QString from = now();
        const bool isSaved = save() || save();
        for (const QStringList& words : isSaved ? stored : QList<QStringList>())
            say(words);
        if (isSaved && counts)
            say({u"stock"_s, form_.Text1(3).text(), form_.Text1(2).text(), from, now()});
        if (!isSaved)
            click(form_.Command1(9));
    }

    // Of its own records, with whatever the others wrote into them.
    void remove()
    {
        show();
        if (!name().startsWith(station))
            return;
        click(form_.Command1(2));
        pause();
        const QStringList words = told(u"gone"_s);
        click(form_.Command1(3));
        say(name() == words[2] ? QStringList{u"refused"_s} : words);
    }

    Records form_;
    QStringList numbers_;
};

class Counter
{
public:
    void sell()
    {
        form_.show();
        for (int lines = 1 + below(3); lines > 0; --lines)
            addLine();
        pause();
        book();
        form_.unload();
    }
    qsizetype lines() const { return list_.size(); }

private:
    void addLine()
    {
        auto* grid = qobject_cast<QTableView*>(form_.MSFlexGrid1.widget());
        const QString from = now();
        grid->setCurrentIndex(grid->model()->index(below(SoldParts), 0));
        emit grid->clicked(grid->currentIndex());
        const QString code = form_.Text1(0).text();
        say({u"see"_s, code, Funciones::Tabela1->Fields(2).textOrEmpty(), from, now()});
        form_.Text1(6).setText(QString::number(1 + below(3)));
        list_ << QStringList{u"sold"_s, code, form_.Text1(3).text(), form_.Text1(6).text()};
        click(form_.Command2(0));
    }

    void book()
    {
        // From the stock that this catalogue shows, whatever the others do meanwhile.
        Recordset& catalogue = *Funciones::Tabela1.shared();
        const int place = catalogue.AbsolutePosition();
        std::map<QString, int> left;
        for (const QStringList& line : list_) {
            catalogue.MoveFirst();
            catalogue.Find(u"CODIGO LIKE '*%1*'"_s.arg(line[1]));
            left[line[1]] = catalogue.Fields(2).textOrEmpty().toInt();
        }
        catalogue.setAbsolutePosition(place);
        for (const QStringList& line : list_)
            left[line[1]] -= line[3].toInt();
        const QString from = now();
        click(form_.Command2(2));
        if (!form_.MSFlexGrid2.TextMatrix(form_.MSFlexGrid2.Rows() - 1, 0).isEmpty() &&
            form_.MSFlexGrid2.Rows() > 1) {
            say({u"refused"_s});
            return;
        }
        for (const auto& [code, stock] : left)
            say({u"stock"_s, code, QString::number(stock), from, now()});
        for (const QStringList& line : list_)
            say(line);
        list_.clear();
    }

    Form1pecavenda& form_ = form<Form1pecavenda>();
    QList<QStringList> list_;
};

} // namespace

// station_driver init FOLDER SHARED_FILE
// station_driver NAME FOLDER SECONDS SEED
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    station = arguments[1];
    setApplicationFolder(arguments[2]);
    if (station == u"init") {
        layDownInstallation(arguments[2], false);
        Funciones::GravaIni(u"Local"_s, u"Caminho"_s, arguments[3], Funciones::CaminhoIni());
        return 0;
    }
    prepareApplication(application);
    chance.seed(arguments[4].toUInt());
    installEventTransactions();
    setMsgBoxForTests(answer);
    addForm<Form1principal>();
    addForm<Form1Cli>();
    addForm<Buscacli>();
    addForm<Form1Pec>();
    addForm<Form1pecabusca>();
    addForm<Form1pecavenda>();
    principal().show();

    Counter counter;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(arguments[3].toInt());
    while (std::chrono::steady_clock::now() < end) {
        if (below(3) == 0) {
            counter.sell();
            continue;
        }
        Desk desk(below(2) == 0 ? orders() : parts());
        for (int step = 1 + below(8); step > 0; --step)
            desk.doSomething();
    }
    say({u"left"_s, QString::number(counter.lines())});
    _exit(0);
}
