#include "MsgBox.h"

#include "EventGate.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

namespace {

std::function<Answer(const Box&)>& answerForTests()
{
    static std::function<Answer(const Box&)> answer;
    return answer;
}

// Swallows what was typed and clicked before an error came up: it was meant for what has failed,
// and would answer the box unread.
class TypedAhead : public QObject
{
public:
    static void drop()
    {
        TypedAhead swallow;
        qApp->installEventFilter(&swallow);
        QCoreApplication::processEvents();
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::Shortcut:
        case QEvent::InputMethod:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick: event->accept(); return true;
        case QEvent::Close: event->ignore(); return true;
        default: return false;
        }
    }
};

// A box that asks Yes or No must be answered: Esc and the frame do nothing there.
class AnswerBox : public QMessageBox
{
public:
    AnswerBox(const Box& box, QWidget* parent)
        : QMessageBox(parent), mustAnswer_(box.buttons == BoxButtons::YesNo)
    {
        setWindowTitle(box.title.isEmpty() ? u"Vorbelo"_s : box.title);
        setTextFormat(Qt::PlainText);
        setText(box.text);
        setIcon(iconOf(box.icon));
        switch (box.buttons) {
        case BoxButtons::Ok: add(u"&OK"_s, Answer::Ok, QMessageBox::AcceptRole); break;
        case BoxButtons::OkCancel:
            add(u"&OK"_s, Answer::Ok, QMessageBox::AcceptRole);
            add(u"&Cancelar"_s, Answer::Cancel, QMessageBox::RejectRole);
            break;
        case BoxButtons::YesNoCancel:
        case BoxButtons::YesNo:
            add(u"&Sim"_s, Answer::Yes, QMessageBox::YesRole);
            add(u"&Não"_s, Answer::No, QMessageBox::NoRole);
            if (!mustAnswer_)
                add(u"&Cancelar"_s, Answer::Cancel, QMessageBox::RejectRole);
            break;
        }
        setDefaultButton(buttons_.front().first);
        makeRoomForTitle();
    }

    Answer answer()
    {
        exec();
        for (const auto& [button, meaning] : buttons_)
            if (button == clickedButton())
                return meaning;
        return buttons_.back().second; // Esc or the frame: Cancel, or the only button
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (mustAnswer_ && event->key() == Qt::Key_Escape)
            return;
        QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override
    {
        if (mustAnswer_)
            event->ignore();
        else
            QMessageBox::closeEvent(event);
    }

private:
    // The frame's own buttons stand beside the title and would cut it in a narrow box.
    void makeRoomForTitle()
    {
        constexpr int FrameButtons = 140;
        auto* grid = qobject_cast<QGridLayout*>(layout());
        if (!grid)
            return;
        auto* room = new QSpacerItem(fontMetrics().horizontalAdvance(windowTitle()) + FrameButtons,
                                     0, QSizePolicy::Minimum, QSizePolicy::Expanding);
        grid->addItem(room, grid->rowCount(), 0, 1, grid->columnCount());
    }

    static QMessageBox::Icon iconOf(BoxIcon icon)
    {
        switch (icon) {
        case BoxIcon::Critical: return QMessageBox::Critical;
        case BoxIcon::Question: return QMessageBox::Question;
        case BoxIcon::Exclamation: return QMessageBox::Warning;
        case BoxIcon::Information: return QMessageBox::Information;
        case BoxIcon::None: break;
        }
        return QMessageBox::NoIcon;
    }

    void add(const QString& caption, Answer meaning, ButtonRole role)
    {
        QPushButton* button = addButton(caption, role);
        buttons_.emplace_back(button, meaning);
        if (role == RejectRole)
            setEscapeButton(button);
    }

    bool mustAnswer_;
    std::vector<std::pair<QPushButton*, Answer>> buttons_;
};

} // namespace

Answer MsgBox(const QString& text, BoxButtons buttons, BoxIcon icon, const QString& title)
{
    const Box box{text, buttons, icon, title};
    const gate::NestedLoop nested;
    if (answerForTests())
        return answerForTests()(box);
    if (icon == BoxIcon::Critical)
        TypedAhead::drop();
    QWidget* parent = QApplication::activeModalWidget();
    if (!parent)
        parent = QApplication::activeWindow();
    AnswerBox window(box, parent);
    return window.answer();
}

void setMsgBoxForTests(std::function<Answer(const Box&)> answer)
{
    answerForTests() = std::move(answer);
}
