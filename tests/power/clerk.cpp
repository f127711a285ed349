#include "Application.h"
#include "Buscacli.h"
#include "Buscafornecedor.h"
#include "EventTransactions.h"
#include "FileLayer.h"
#include "Form1Cli.h"
#include "Form1Defeitos.h"
#include "Form1For.h"
#include "Form1Pec.h"
#include "Form1manutencao.h"
#include "Form1pecabusca.h"
#include "Form1pecavenda.h"
#include "Form1pedido.h"
#include "Form1principal.h"
#include "Form1servico.h"
#include "Funciones.h"
#include "HostPaths.h"
#include "Installation.h"
#include "MsgBox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTableView>

#include <sqlite3.h>

#include <unistd.h>

#include <chrono>
#include <random>

// A clerk who works at the forms at random and tells each thing on the output, a line each, parted
// by tabs, before it is stored:
//   new|gone KIND NAME VALUES...     set KIND NAME FIELD OLD NEW     sold CODE DESCRIPTION PIECES
//   stock CODE PIECES FROM (when, at the least)     backup     restore
// and behind it whether it was: done TO, or refused. Then also:
//   list LINES     line     left LINES     asked     box TEXT     see CODE PIECES FROM TO

using namespace Qt::Literals::StringLiterals;

namespace {

std::mt19937 chance;
QString sign; // begins all that this clerk types; the first character tells whose it is
useconds_t longestPause = 0; // microseconds
Answer lastAnswer = Answer::Ok;
bool wasRefused = false;
bool hasEnded = false;

int below(qsizetype limit)
{
    return static_cast<int>(chance() % static_cast<unsigned>(limit));
}

void say(const QStringList& words)
{
    const QByteArray line = words.join(u'\t').toUtf8() + '\n';
    if (write(STDOUT_FILENO, line.constData(), static_cast<std::size_t>(line.size())) !=
        line.size())
        std::abort();
}

QString newText()
{
    static int texts = 0;
    return sign + QString::number(++texts, 36);
}

QString now()
{
    return QString::number(std::chrono::steady_clock::now().time_since_epoch().count());
}

void end(bool isStored)
{
    say({isStored ? u"done"_s : u"refused"_s, now()});
}

void rest()
{
    if (longestPause > 0)
        usleep(chance() % longestPause);
}

void click(CommandButton& button)
{
    qobject_cast<QAbstractButton*>(button.widget())->click();
    QCoreApplication::processEvents();
}

void clickRow(FlexGrid& grid, int row)
{
    auto* view = qobject_cast<QTableView*>(grid.widget());
    view->setCurrentIndex(view->model()->index(row, 0));
    emit view->clicked(view->currentIndex());
}

Answer answer(const Box& box)
{
    if (box.text.startsWith(u"Número de Cadastro já existe")) {
        say({u"asked"_s});
        return lastAnswer = below(2) == 0 ? Answer::Yes : Answer::No;
    }
    if (box.text.contains(u"A linha não pode ser localizada para atualização"))
        wasRefused = true; // where the form's store routine has no trap
    else if (box.text != u"Uso interno da oficina ?" && !box.text.startsWith(u"Deseja Realmente") &&
             !box.text.startsWith(u"Máximo 24 linhas") &&
             !box.text.startsWith(u"Operação concluída"))
        say({u"box"_s, box.text.simplified()});
    return box.buttons == BoxButtons::YesNo ? Answer::Yes : Answer::Ok;
}

void endAgain()
{
    setEndProgramForTests([](EndReason) {
        hasEnded = true;
        if (!wasRefused)
            say({u"box"_s, u"the program ended"_s});
    });
    hasEnded = false;
}

// What the record forms have alike.
struct Records
{
    QString kind;
    Form& window;
    ControlArray<CommandButton>& Command1;
    TextBox& lookUp;
    TextBox& count;
    TextBox& number;
    TextBox& name; // tells a record for ever
    std::vector<TextBox*> boxes;
};

constexpr int Kinds = 6; // the orders and the parts are the first

// The first of the boxes is the name.
template <class Shown>
Records made(const QString& kind, Shown& on, TextBox& lookUp, TextBox& count, TextBox& number,
             ControlArray<TextBox>& array, std::initializer_list<int> boxes)
{
    Records made{kind, on, on.Command1, lookUp, count, number, array(*boxes.begin()), {}};
    for (const int* box = boxes.begin() + 1; box != boxes.end(); ++box)
        made.boxes.push_back(&array(*box));
    return made;
}

// Only the form that is asked for: a look at a control of another would load it.
Records records(int kind)
{
    if (kind == 0) {
        auto& on = form<Form1Cli>();
        return made(u"order"_s, on, on.Text2, on.Text1(16), on.Text1(13), on.Text1,
                    {0, 1, 2, 5, 11, 12});
    }
    if (kind == 1) {
        auto& on = form<Form1Pec>();
        return made(u"part"_s, on, on.Text2, on.Text1(16), on.Text1(3), on.Text1, {1, 0, 4});
    }
    if (kind == 2) {
        auto& on = form<Form1For>();
        return made(u"firm"_s, on, on.Text3, on.Text1(5), on.Text4, on.Text1, {0, 1, 3, 4});
    }
    if (kind == 3) {
        auto& on = form<Form1pedido>();
        return made(u"purchase"_s, on, on.Text2, on.Text1(2), on.Text1(3), on.Text1, {0, 1});
    }
    if (kind == 4) {
        auto& on = form<Form1Defeitos>();
        return made(u"defect"_s, on, on.Text3, on.Text1(16), on.Text2(0), on.Text2, {0, 1, 2, 3});
    }
    auto& on = form<Form1manutencao>();
    return made(u"on-site"_s, on, on.Text2, on.Text5, on.Text1(18), on.Text1, {0, 1, 7, 17});
}

class Desk
{
public:
    explicit Desk(Records records) : form_(std::move(records))
    {
        form_.window.show();
        click(form_.Command1(12));
        for (int row = form_.count.text().toInt(); row > 0; --row) {
            numbers_ << form_.number.text();
            click(form_.Command1(11));
        }
    }

    ~Desk()
    {
        endAgain();
        form_.window.unload();
    }

    void doSomething()
    {
        constexpr int Fewest = 8;
        constexpr int Most = 14;
        const int choice = below(6);
        if (hasEnded)
            return;
        if (numbers_.size() < Fewest || (choice == 0 && numbers_.size() < Most))
            add();
        else if (choice == 1)
            remove();
        else
            edit();
    }

    void add()
    {
        click(form_.Command1(0));
        form_.name.setText(newText());
        for (int field = 0; field < edited(); ++field)
            form_.boxes[static_cast<std::size_t>(field)]->setText(newText());
        const QStringList stored = told(u"new"_s);
        lastAnswer = Answer::No;
        for (int tries = 4; tries > 0 && lastAnswer == Answer::No; --tries) {
            const QString number = form_.number.text();
            if (save({stored})) {
                numbers_ << number;
                return;
            }
            // The box of the number stands open and empty.
            const int last = numbers_.isEmpty() ? 0 : numbers_.back().toInt();
            form_.number.setText(u"%1"_s.arg(last + 1 + below(3), 7, 10, QChar(u'0')));
        }
        click(form_.Command1(9));
    }

    void edit()
    {
        if (!show())
            return;
        click(form_.Command1(2));
        QList<QStringList> stored;
        for (int times = 1 + below(2); times > 0; --times) {
            const int field = below(edited());
            TextBox& box = *form_.boxes[static_cast<std::size_t>(field)];
            const QString before = box.text();
            box.setText(newText());
            stored << QStringList{u"set"_s, form_.kind, form_.name.text(), QString::number(field),
                                  before,   box.text()};
        }
        const bool counts = form_.name.text().startsWith(u"peca") && below(3) == 0;
        if (counts) {
            const QString pieces = QString::number(1000 + below(9000));
            form<Form1Pec>().Text1(2).setText(pieces);
            stored << QStringList{u"stock"_s, form_.number.text(), pieces, now()};
        }
        const bool isSaved = save(stored) || (!hasEnded && save(stored));
        if (!isSaved && !hasEnded)
            click(form_.Command1(9));
    }

    // Of its own records, with whatever the others wrote into them.
    void remove()
    {
        if (!show() || !form_.name.text().startsWith(sign.front()))
            return;
        click(form_.Command1(2));
        rest();
        const QStringList words = told(u"gone"_s);
        const QString number = form_.number.text();
        say(words);
        click(form_.Command1(3));
        const bool isGone = form_.name.text() != words[2];
        end(isGone);
        if (isGone)
            numbers_.removeOne(number);
    }

    bool isEmpty() const { return numbers_.isEmpty(); }

private:
    // The service is the bench's.
    int edited() const { return std::min(4, static_cast<int>(form_.boxes.size())); }

    QStringList told(const QString& what) const
    {
        QStringList words{what, form_.kind, form_.name.text()};
        for (const TextBox* box : form_.boxes)
            words << box->text();
        return words;
    }

    // Not the purchases of a sale, which makes them again and again.
    bool show()
    {
        if (below(2) == 0 || numbers_.isEmpty()) {
            for (int step = below(4); step >= 0; --step)
                click(form_.Command1(10 + below(4)));
        } else {
            form_.lookUp.setText({});
            form_.lookUp.setText(numbers_[below(numbers_.size())]);
        }
        rest();
        return form_.boxes.front()->text() != u"p.EST";
    }

    bool save(const QList<QStringList>& words)
    {
        for (const QStringList& each : words)
            say(each);
        rest();
        wasRefused = false;
        click(form_.Command1(1));
        // Else the form stays as it was where the save was refused.
        const bool isSaved = !wasRefused && !form_.Command1(1).enabled();
        end(isSaved);
        return isSaved;
    }

    Records form_;
    QStringList numbers_;
};

void workAtTheBench()
{
    auto& bench = form<Form1servico>();
    bench.show();
    // Found by what all numbers hold, which no box of the form reads like.
    bench.Text1(0).setText(u"000"_s);
    if (const int found = bench.MSFlexGrid1.Rows() - 1; found > 0) {
        clickRow(bench.MSFlexGrid1, below(found));
        rest();
        click(bench.Command1(0));
        const QString text = newText();
        int field = 4;
        for (TextBox* box : {&bench.Text1(26), &bench.line(1).code}) {
            say({u"set"_s, u"order"_s, bench.Text1(2).text(), QString::number(field++), box->text(),
                 text});
            box->setText(text);
        }
        rest();
        wasRefused = false;
        click(bench.Command1(1));
        end(!wasRefused);
        endAgain();
    }
    bench.unload();
}

class Counter
{
public:
    Counter()
    {
        form_.show();
        say({u"list"_s, QString::number(lines().size())});
    }

    ~Counter() { form_.unload(); }

    QList<QStringList> lines() const
    {
        QList<QStringList> lines;
        const FlexGrid& grid = form_.MSFlexGrid2;
        for (int row = 1; row < grid.Rows(); ++row)
            if (!grid.TextMatrix(row, 0).isEmpty())
                lines << QStringList{grid.TextMatrix(row, 0), grid.TextMatrix(row, 3),
                                     grid.TextMatrix(row, 2)};
        return lines;
    }

    void addLine(int part, int pieces)
    {
        const QString from = now();
        clickRow(form_.MSFlexGrid1, part);
        say({u"line"_s});
        say({u"see"_s, form_.Text1(0).text(), Funciones::Tabela1->Fields(2).textOrEmpty(), from,
             now()});
        form_.Text1(6).setText(QString::number(pieces));
        click(form_.Command2(0));
    }

    void book()
    {
        // From the stock that this catalogue shows, whatever the others do meanwhile.
        const QList<QStringList> list = lines();
        Recordset& catalogue = *Funciones::Tabela1.shared();
        const int place = catalogue.AbsolutePosition();
        std::map<QString, int> left;
        for (const QStringList& line : list) {
            say(QStringList{u"sold"_s} + line);
            catalogue.MoveFirst();
            catalogue.Find(u"CODIGO LIKE '*%1*'"_s.arg(line[0]));
            left.emplace(line[0], catalogue.Fields(2).textOrEmpty().toInt());
            left[line[0]] -= line[2].toInt();
        }
        if (place > 0)
            catalogue.setAbsolutePosition(place);
        for (const auto& [code, stock] : left)
            say({u"stock"_s, code, QString::number(stock), now()});
        click(form_.Command2(2));
        end(lines().isEmpty());
    }

private:
    Form1pecavenda& form_ = form<Form1pecavenda>();
};

filelayer::Status* status = nullptr;

// Each of these is meant to be killed; where it sweeps it does each thing once.
void orders(bool onceEach)
{
    Desk desk(records(0));
    desk.add();
    status->armed = 1;
    do {
        if (onceEach)
            desk.add(), desk.edit(), desk.remove();
        else
            desk.doSomething();
    } while (!onceEach);
}

void change(int kind, bool andRemove)
{
    Desk desk(records(kind));
    if (andRemove)
        desk.add();
    desk.isEmpty() ? desk.add() : desk.edit();
    if (andRemove)
        desk.remove();
}

void registers()
{
    for (int kind = 1; kind < Kinds; ++kind)
        change(kind, true);
}

// Pages come to lie elsewhere, so that half of one content and half of another make no whole file.
void moveAround()
{
    sqlite3* file = nullptr;
    sqlite3_open(QFile::encodeName(
                     hostPath(Funciones::LeIni(u"Local"_s, u"Caminho"_s, Funciones::CaminhoIni()))),
                 &file);
    sqlite3_exec(
        file,
        "CREATE TABLE IF NOT EXISTS sobra (texto); BEGIN; DELETE FROM sobra; INSERT INTO sobra "
        "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i+1 FROM n WHERE i<60) "
        "SELECT hex(randomblob(abs(random())%1500)) FROM n; COMMIT",
        nullptr, nullptr, nullptr);
    sqlite3_close(file);
}

// An order's text is changed, copied away, changed again and brought back.
void backups()
{
    for (const bool back : {false, true}) {
        change(0, false);
        moveAround();
        say({back ? u"restore"_s : u"backup"_s});
        back ? principal().EfetuaRestauracao() : principal().EfetuaBackup();
        end(true);
    }
}

void sell(int lines)
{
    constexpr int Parts = 30;
    Counter counter;
    while (counter.lines().size() < lines) {
        const int part = below(Parts);
        counter.addLine(part, 1 + part % 2); // until none is left, and never fewer
    }
    status->armed = lines > 1;
    counter.book();
}

// A list that a cut left is booked first.
void sales()
{
    constexpr int FullList = 24;
    sell(1);
    sell(FullList);
}

void station(int seconds)
{
    constexpr int SoldParts = 6; // the first of the catalogue; they are never deleted
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (std::chrono::steady_clock::now() < end) {
        const int choice = below(6);
        if (choice < 2) {
            Counter counter;
            for (int lines = 1 + below(3); lines > 0; --lines)
                counter.addLine(below(SoldParts), 1 + below(3));
            rest();
            counter.book();
        } else if (choice == 2) {
            workAtTheBench();
        } else {
            Desk desk(records(choice < 5 ? choice - 3 : 2 + below(Kinds - 2)));
            for (int step = 1 + below(8); step > 0; --step)
                desk.doSomething();
        }
    }
    say({u"left"_s, QString::number(Counter().lines().size())});
}

void init(const QString& folder, const QString& file)
{
    layDownInstallation(folder, false);
    const QString copies = QFileInfo(file).path() + u"/copia"_s;
    QDir().mkpath(copies);
    Funciones::GravaIni(u"Local"_s, u"Caminho"_s, file, Funciones::CaminhoIni());
    Funciones::GravaIni(u"Backup"_s, u"Pastabackup"_s, copies, Funciones::CaminhoIni());
}

} // namespace

// clerk init FOLDER SHARED_FILE
// clerk station FOLDER NAME SEED SECONDS
// clerk orders|registers|bench|sales|backups FOLDER WAY SEED CALL CUT
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QString mode = arguments[1];
    const QString folder = arguments[2];
    setApplicationFolder(folder);
    if (mode == u"init") {
        init(folder, arguments[3]);
        return 0;
    }
    prepareApplication(application);
    const QString way = arguments[3];
    const auto seed = arguments[4].toUInt();
    const bool onceEach = way == u"sweep" || way == u"deaf";
    chance.seed(seed);
    if (mode == u"station") {
        sign = way;
        longestPause = 8000;
    } else {
        sign = u"p%1"_s.arg(getpid() % (36 * 36 * 36), 3, 36, QChar(u'0'));
        status = filelayer::map((folder + u"/status"_s).toUtf8().constData());
        filelayer::install(status,
                           {arguments[5].toInt(), static_cast<filelayer::Cut>(arguments[6].toInt()),
                            way == u"deaf"},
                           seed);
    }
    installEventTransactions();
    EventTransactions::instance().setCommitPerStatementForTests(way == u"each-statement");
    setMsgBoxForTests(answer);
    endAgain();
    addForm<Form1principal>();
    addForm<Form1Cli>();
    addForm<Buscacli>();
    addForm<Form1servico>();
    addForm<Form1manutencao>();
    addForm<Form1Pec>();
    addForm<Form1pecabusca>();
    addForm<Form1pecavenda>();
    addForm<Form1pedido>();
    addForm<Form1For>();
    addForm<Buscafornecedor>();
    addForm<Form1Defeitos>();
    principal().show();

    if (mode == u"station") {
        station(arguments[5].toInt());
    } else if (mode == u"sales") {
        sales();
    } else if (mode == u"orders") {
        orders(onceEach);
    } else {
        status->armed = 1;
        do
            (mode == u"backups" ? backups : mode == u"registers" ? registers : workAtTheBench)();
        while (!onceEach);
    }
    _exit(0);
}
