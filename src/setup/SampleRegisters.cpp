#include "SampleRegisters.h"

using namespace Qt::Literals::StringLiterals;

namespace {

struct Known
{
    QString defect;
    QString solution;
};

const std::vector<Known>& knownDefects()
{
    static const std::vector<Known> all{
        {u"Liga e desliga em seguida"_s,
         u"Capacitor da fonte com fuga.\nTrocar C910 e C912.\nMedir os 115 V antes de fechar."_s},
        {u"Faixa horizontal na tela"_s,
         u"Solda fria no integrado vertical; ressoldar e trocar o eletrolítico ao lado."_s},
        {u"Não sintoniza canais altos"_s, u"Varicap ou tensão de 33 V baixa; medir o zener."_s},
        {u"CD pula"_s, u"Limpar a lente.\nSe persistir, ajustar o ganho de foco."_s},
        {u"Prato não gira"_s, u"Motor síncrono aberto; medir a bobina antes de trocar."_s},
        {u"Imagem esverdeada"_s,
         u"Amplificador de vídeo do canal vermelho; trocar o transistor na placa do tubo."_s},
        {u"Não liga, sem luz no painel"_s,
         u"Fusível aberto e ponte em curto.\nTrocar os dois e conferir o termistor."_s},
        {u"Som baixo e distorcido"_s, u"Capacitor de acoplamento seco na saída de áudio."_s},
        {u"Engole a fita"_s, u"Correia de carga frouxa; trocar e limpar as polias com álcool."_s},
        {u"Controle remoto não responde"_s,
         u"Receptor com solda partida.\nTestar antes com a câmera do celular."_s},
        {u"Tela com manchas coloridas"_s, u"Termistor da bobina desmagnetizadora; trocar."_s},
        {u"Aquece mas não gira e faz barulho"_s, u"Acoplamento do prato quebrado."_s},
        {u"Não aquece"_s, u"Diodo de alta tensão em curto.\nDescarregar o capacitor antes de "
                          u"medir.\nTrocar também o "
                          "fusível de alta."_s},
        {u"Gaveta não abre"_s, u"Correia da gaveta ressecada; trocar."_s},
        {u"Chia em FM"_s, u"Realinhar o discriminador; núcleo trincado."_s},
        {u"Imagem fecha nas laterais"_s, u"Capacitor de largura com valor baixo."_s},
        {u"Queima o transistor de saída"_s,
         u"Flyback em curto entre espiras.\nTestar com anel antes de trocar o transistor."_s},
        {u"Relógio não guarda a hora"_s, u"Bateria de memória descarregada."_s},
        {u"Estala ao ligar"_s, u"Relé de proteção com contato gasto; trocar."_s},
        {u"Apaga depois de uma hora"_s,
         u"Solda fria no regulador.\nAparece com o aparelho quente: usar spray."_s}};
    return all;
}

} // namespace

TableRows sampleSuppliers(SampleWords& words)
{
    TableRows suppliers{u"FORNECEDOR"_s, {}};
    const QStringList trades{u"Eletrônica"_s, u"Comercial"_s, u"Distribuidora"_s,
                             u"Casa das Válvulas"_s, u"Componentes"_s};
    const QStringList products{u"Capacitores e resistores"_s, u"Controles remotos"_s,
                               u"Peças para micro-ondas"_s,   u"Cabos e conectores"_s,
                               u"Unidades ópticas"_s,         u"Cinescópios recondicionados"_s,
                               u"Ferramentas e soldas"_s};
    constexpr int Count = 50;
    for (int number = 1; number <= Count; ++number) {
        const QString person = words.person();
        // Who sells on his own account has the document of a person and no registration.
        const bool alone = words.below(8) == 0;
        const QString firm = alone ? person + u" Representações"_s
                                   : u"%1 %2 Ltda"_s.arg(words.oneOf(trades), words.district());
        suppliers.rows.push_back(
            {firm.left(40), person,
             words.below(3) == 0 ? QString() : u"www.fornecedor%1.exemplo.com.br"_s.arg(number),
             words.below(5) == 0 ? QString() : SampleWords::email(person).left(40), words.phone(),
             words.below(3) == 0 ? QString() : words.mobile(), alone ? words.cpf() : words.cgc(),
             alone ? QString() : QString::number(200000000 + words.below(99999999)),
             words.oneOf(products), SampleWords::code(number)});
    }
    return suppliers;
}

TableRows sampleDefects()
{
    TableRows defects{u"DEFEITO"_s, {}};
    const QStringList brands{u"Aurora"_s, u"Boreal"_s, u"Caiçara"_s,     u"Itapuã"_s,
                             u"Jurema"_s, u"Lumiar"_s, u"Aurora Plus"_s, u"Pampeana"_s};
    const auto& known = knownDefects();
    constexpr int Count = 80;
    for (int number = 0; number < Count; ++number) {
        const Known& entry = known[static_cast<std::size_t>(number) % known.size()];
        const bool isOpen = number % 27 == 26; // written down, and not solved yet
        defects.rows.push_back({brands[3LL * number % brands.size()],
                                number % 9 == 8 ? QString(7, u'*') : u"TX-%1"_s.arg(20 + number),
                                entry.defect, isOpen ? QString(23, u'*') : entry.solution});
    }
    return defects;
}
