#include "Form1pecavenda.h"

#include "ByteSearch.h"
#include "Collation.h"
#include "Dates.h"
#include "EventTransactions.h"
#include "Funciones.h"
#include "Numbers.h"
#include "OnePiece.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string_view>

using namespace Qt::Literals::StringLiterals;
using namespace Funciones;

namespace {

// A description can be looked up unless it is blank, which asks for nothing, or holds an
// apostrophe, which breaks the criterion.
bool canBeLookedUp(const QString& description)
{
    return !Trim(description).isEmpty() && !description.contains(u'\'');
}

constexpr std::size_t SequenceLength = sizeof(std::uint64_t);
constexpr int SequenceBits = 21;

// Each sequence's place, until the visitor has seen enough; whether it saw them all.
bool eachSequence(std::string_view text, const std::function<bool(std::size_t place)>& visit)
{
    for (std::size_t at = 0; at + SequenceLength <= text.size(); ++at) {
        std::uint64_t sequence;
        std::memcpy(&sequence, text.data() + at, SequenceLength);
        // Multiplicative hashing by the golden ratio.
        if (!visit((sequence * 0x9E3779B97F4A7C15u) >> (64 - SequenceBits)))
            return false;
    }
    return true;
}

} // namespace

void Form1pecavenda::BaixaEstoque()
try {
    const QScopedValueRollback booking(isBooking_, true);
    AbreBanco5();
    openStatic(Tabela5, Conexao5, u"SELECT * FROM MOVIMENTO order by codigo"_s);
    // Before anything is booked: a list that cannot be emptied would be booked once more.
    takeWriteLocks({Conexao5, Conexao2});
    std::optional<RuntimeError> failure;
    inOnePiece({Conexao5, Conexao2}, [&] {
        failure = writeOffLines();
        if (!failure && Tabela2->RecordCount() == QuantidadeItens)
            deleteLines();
    });
    if (failure)
        throw *failure;
    // Shown only now, when nothing is left to be stored that could take it back.
    FlagRecarga = 2;
    CarregaCatalogo();
    CarregaListaVenda();
    FechaBanco5();
} catch (const RuntimeError&) {
    // The catalogue does not stand on the part of this code any more: a second try looks it up.
    Text2.setText({});
    throw;
}

// Where one fails, those before it stay booked.
std::optional<RuntimeError> Form1pecavenda::writeOffLines()
try {
    Tabela2->MoveFirst();
    QuantidadeItens = Tabela2->RecordCount();
    for (EstoqueAtual = 1; EstoqueAtual <= QuantidadeItens; ++EstoqueAtual) {
        writeOffLine();
        Tabela2->MoveNext();
    }
    return std::nullopt;
} catch (const RuntimeError& error) {
    return error;
}

// The booking is durable, or everything is shown as it was before it.
void Form1pecavenda::finishWriteOff()
{
    PedidoAutomatico();
    if (commitWrites())
        return;
    Text2.setText({});
    try {
        FlagRecarga = 1;
        CarregaListaVenda();
    } catch (const RuntimeError&) {
        // The file cannot be read either, as the user was just told.
    }
    FlagRecarga = 2;
    CarregaCatalogo();
}

// A line is one piece: a failure keeps the lines before it, and nothing of its own.
void Form1pecavenda::writeOffLine()
{
    // The Change event looks the part up. A code that stands there already, as in a second line of
    // the same part, fires nothing and the catalogue stays on its row.
    Text2.setText(Tabela2->Fields(u"CODIGO"_s).textOrEmpty());
    Text11.setText(Tabela1->Fields(2).textOrEmpty());
    Text9.setText(Tabela2->Fields(u"QUANTIDADE"_s).textOrEmpty());
    // Below 0 and by Val: nothing compares the quantity with the stock, and a text that is no
    // number counts up to its first foreign character.
    Text8.setText(toText(Val(Text11.text()) - Val(Text9.text())));
    inOnePiece({Conexao1}, [this] {
        // What another station stored in it meanwhile is written over; a part that is gone books
        // nothing.
        Tabela1->retakeVersion();
        Tabela1->Fields(u"ESTOQUE"_s) = Text8.text();

        Tabela5->AddNew();
        Tabela5->Fields(0) = Tabela2->Fields(u"CODIGO"_s).value();
        Tabela5->Fields(1) = Tabela2->Fields(u"DESCRICAO"_s).value();
        Tabela5->Fields(2) = Tabela2->Fields(u"QUANTIDADE"_s).value();
        Tabela5->Fields(3) = Tabela2->Fields(u"TOTAL"_s).value();
        Tabela5->Fields(4) = dateText(Clock::today());
        Tabela5->Update();
        Tabela1->Update();
    });
}

void Form1pecavenda::Text13_Change()
{
    const QString description = Trim(Text13.text());
    if (description.isEmpty())
        return;
    Tabela4->MoveFirst();
    Tabela4->Find(likeCriterion(u"DESCRICAO"_s, description));
    DescricaoPedido = Tabela4->Fields(1).textOrEmpty();
    Text14.setText(DescricaoPedido);
}

// Goes through the whole catalogue. Each part would go through Text13 and its look-up over all
// orders; what comes of that is worked out instead, and the last part alone goes through the box.
void Form1pecavenda::PedidoAutomatico()
{
    bool failed = false;
    passed_.clear();
    try {
        readOrders();
        orderWhatRanOut();
    } catch (const RuntimeError&) {
        failed = true; // ends silently
    }
    rememberLastOrderFound();
    Text13.setText(DescricaoPeca);
    if (!failed)
        setCaption(captionInUse(u"Venda de peças e acessórios     "_s));
}

void Form1pecavenda::orderWhatRanOut()
{
    // No event of the loop replaces the pair.
    const std::shared_ptr<Recordset>& parts = Tabela1.shared();
    for (parts->MoveFirst(); !parts->eof(); parts->MoveNext()) {
        const QString stock = parts->Fields(2).textOrEmpty();
        if (!isNumeric(stock)) // passed over, and the next part is looked at
            continue;
        EstoqueAtual = toNumber(stock);
        DescricaoPeca = parts->Fields(3).textOrEmpty();
        passed_.push_back(DescricaoPeca);
        if (EstoqueAtual == 0 && !isOrdered())
            addOrder();
    }
}

void Form1pecavenda::addOrder()
{
    if (!Tabela3->eof()) {
        Tabela3->MoveLast();
        Text12.setText(Tabela3->Fields(3).textOrEmpty());
    }
    const QString code = nextCode(Text12.text());
    Text12.setText(code);
    // In a piece, or a failure would leave a row pending in the way of all later orders.
    inOnePiece({Conexao3}, [this, &code] {
        Tabela3->AddNew();
        Tabela3->Fields(u"CODIGO"_s) = code;
        Tabela3->Fields(u"DATAPEDIDO"_s) = dateText(Clock::today());
        if (!DescricaoPeca.isEmpty())
            Tabela3->Fields(u"DESCRICAO"_s) = DescricaoPeca;
        Tabela3->Fields(u"QUANTIDADE"_s) = u"p.EST"_s;
        Tabela3->Update();
    });
}

// Whether the part in hand has the description that the last look-up found. Its own look-up may
// have found nothing; what an earlier part found is then still remembered, but can be passed by:
// the remembered text is the description of an order, and were it equal to this part's, the look-up
// of this part would have found that order, or one before it. Only a description that cannot be
// looked up has to be held against what earlier parts left behind.
bool Form1pecavenda::isOrdered()
{
    if (!canBeLookedUp(DescricaoPeca)) {
        rememberLastOrderFound();
        return DescricaoPeca == DescricaoPedido;
    }
    const std::optional<QString> found = firstOrderLike(DescricaoPeca);
    if (!found)
        return false;
    rememberLastOrderFound();
    return DescricaoPeca == *found;
}

// Brings DescricaoPedido up to the last part passed: what the latest look-up found that found
// anything, the former value where none did.
void Form1pecavenda::rememberLastOrderFound()
{
    for (auto description = passed_.rbegin(); description != passed_.rend(); ++description) {
        if (const std::optional<QString> found = firstOrderLike(*description)) {
            DescricaoPedido = *found;
            Text14.setText(DescricaoPedido);
            break;
        }
    }
    passed_.clear();
}

// The first order, in code order, whose description contains this one; what Find would stand on.
std::optional<QString> Form1pecavenda::firstOrderLike(const QString& description) const
{
    if (!canBeLookedUp(description))
        return std::nullopt;
    const std::string text = folded(Trim(description)).toStdString();
    if (!eachSequence(text, [this](std::size_t place) { return orders_->sequences[place]; }))
        return std::nullopt;
    const std::size_t place = findBytes(orders_->folded, text, 0);
    if (place == std::string::npos)
        return std::nullopt;
    const auto end = std::upper_bound(orders_->ends.begin(), orders_->ends.end(), place);
    return orders_->descriptions[static_cast<std::size_t>(end - orders_->ends.begin())];
}

// Once a load: Tabela4 keeps the orders of the time when the form was opened, so that what is
// ordered here is not found before the form is opened again. Meant.
void Form1pecavenda::readOrders()
{
    constexpr char Divider = '\xff'; // stands in no text
    if (orders_)
        return;
    OrderTexts orders;
    if (Tabela4->RecordCount() != 0)
        Tabela4->MoveFirst();
    for (; !Tabela4->eof(); Tabela4->MoveNext()) {
        orders.descriptions.push_back(Tabela4->Fields(1).textOrEmpty());
        orders.folded += folded(orders.descriptions.back()).toStdString() + Divider;
        orders.ends.push_back(orders.folded.size());
    }
    orders.sequences.resize(std::size_t(1) << SequenceBits);
    eachSequence(orders.folded,
                 [&orders](std::size_t place) { return orders.sequences[place] = true; });
    orders_ = std::move(orders);
}
