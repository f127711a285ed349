#include "Form1principal.h"
#include "Form1servico.h"
#include "Funciones.h"
#include "RecordFields.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"

// The eleven lines of parts applied: a note of what was used, and nothing more. No stock moves, and
// nothing is summed.

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

Form1servico::Line Form1servico::line(int number) const
{
    return {Text1(26 + number), *combos_[static_cast<size_t>(number - 1)], Text1(14 + number),
            Text1(3 + number), 2 + 4 * (number - 1)};
}

// The same entries for all lists but the fifth. What was read before an error is listed.
void Form1servico::CarregaPecas()
{
    auto descriptions = std::make_shared<std::vector<QString>>();
    try {
        if (Tabela1->RecordCount() == 0)
            return;
        readDescriptions(*descriptions);
        Tabela1->MoveFirst();
    } catch (const RuntimeError&) {
        // Goes on with what there is.
    }
    for (ComboBox* description : combos_)
        description->setEntries(descriptions);
    // It takes each part twice at the same place: the parts up to the last one, and then back to
    // the first. Meant.
    auto thereAndBack = std::make_shared<std::vector<QString>>(*descriptions);
    thereAndBack->insert(thereAndBack->end(), descriptions->rbegin(), descriptions->rend());
    Combo5.setEntries(thereAndBack);
    principal().StatusBar1.setPanel(2, u"Formulário de Peças Aplicadas"_s);
}

void Form1servico::readDescriptions(std::vector<QString>& descriptions)
{
    Recordset& parts = *Tabela1.shared();
    descriptions.reserve(static_cast<size_t>(parts.RecordCount()));
    parts.MoveFirst();
    ContadorLista = 0;
    while (!parts.eof()) {
        const Field description = parts.Fields(3);
        // The table refuses a Null here, which would never be passed.
        if (!description.isNull()) {
            descriptions.push_back(description.textOrEmpty());
            ContadorListaAnterior = ContadorLista;
            ContadorLista = ContadorListaAnterior + 1;
            parts.MoveNext();
        }
    }
}

void Form1servico::Combo_Click(int Index)
{
    LinhaPeca = Index;
    // Another description than the last one looks its part up.
    Text4.setText(line(Index).description.text());
    PreencheLinha();
}

void Form1servico::Text4_Change()
{
    if (Trim(Text4.text()).isEmpty())
        return;
    Tabela3->MoveFirst();
    // The first description that holds the text wins. One with an apostrophe breaks the criterion,
    // and is meant to.
    Tabela3->Find(likeCriterion(u"descricao"_s, Text4.text()));
    PreencheLinha();
}

void Form1servico::PreencheLinha()
{
    const Line boxes = line(LinhaPeca);
    boxes.code.setText(Tabela3->Fields(0).textOrEmpty());
    // Not a quantity: the technician types over it. Meant.
    boxes.quantity.setText(Tabela3->Fields(u"EQUIVALENTE"_s).textOrEmpty());
    boxes.value.setText(asMoney(Tabela3->Fields(4)));
}

void Form1servico::MostraPecasAplicadas()
try {
    if (Tabela4->RecordCount() == 0)
        return;
    Text1(1).setToolTipText(Tabela4->Fields(0).textOrEmpty());
    Text1(2).setToolTipText(Tabela4->Fields(1).textOrEmpty());
    for (int number = 1; number <= Lines; ++number) {
        const Line boxes = line(number);
        boxes.code.setText(Tabela4->Fields(boxes.position).textOrEmpty());
        boxes.description.setText(Tabela4->Fields(boxes.position + 1).textOrEmpty());
        boxes.quantity.setText(Tabela4->Fields(boxes.position + 2).textOrEmpty());
        boxes.value.setText(asMoney(Tabela4->Fields(boxes.position + 3)));
    }
} catch (const RuntimeError&) {
    // Ends silently: what was filled so far stays in view.
}

// Values are stored as they are shown.
void Form1servico::fillTwin()
{
    std::vector<BoxField> fields;
    for (int number = 1; number <= Lines; ++number) {
        const Line boxes = line(number);
        fields.push_back({boxes.position, boxes.code});
        fields.push_back({boxes.position + 2, boxes.quantity});
        fields.push_back({boxes.position + 3, boxes.value, asMoney});
    }
    storeFields(Tabela4, fields);
    for (int number = 1; number <= Lines; ++number)
        Tabela4->Fields(line(number).position + 1) = line(number).description.text();
}
