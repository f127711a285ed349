#include "RuntimeError.h"

#include <utility>

namespace {

struct Published
{
    int number;
    QStringView description;
};

constexpr Published Descriptions[] = {
    {RuntimeError::InvalidCall, u"Chamada de procedimento ou argumento inválido"},
    {RuntimeError::Overflow, u"Estouro"},
    {RuntimeError::TypeMismatch, u"Tipos incompatíveis"},
    {RuntimeError::FileNotFound, u"Arquivo não encontrado"},
    {RuntimeError::FileAlreadyExists, u"O arquivo já existe"},
    {RuntimeError::DiskFull, u"Disco cheio"},
    {RuntimeError::DeviceUnavailable, u"Dispositivo não disponível"},
    {RuntimeError::PermissionDenied, u"Permissão negada"},
    {RuntimeError::PathFileAccess, u"Erro de acesso ao caminho/arquivo"},
    {RuntimeError::PathNotFound, u"Caminho não encontrado"},
    {RuntimeError::ObjectNotSet,
     u"A variável do objeto ou a variável do bloco With não foi definida"},
    {RuntimeError::InvalidNull, u"Uso inválido de Null"},
    {RuntimeError::NoSuchArrayElement, u"O elemento da matriz de controles não existe"},
    {RuntimeError::InvalidPropertyValue, u"Valor de propriedade inválido"},
    {RuntimeError::InvalidPropertyIndex, u"Índice de matriz de propriedade inválido"},
    {RuntimeError::AlreadyDisplayed, u"Formulário já exibido; não é possível exibi-lo como modal"},
    {RuntimeError::ModalFormDisplayed,
     u"Não é possível exibir formulário não-modal quando há um formulário modal"},
    {RuntimeError::PrinterFault, u"Erro de impressora"},
    {RuntimeError::WrongArguments,
     u"Os argumentos são do tipo errado, estão fora do intervalo aceitável "
     u"ou estão em conflito."},
    {RuntimeError::NoCurrentRecord, u"BOF ou EOF é verdadeiro ou o registro atual foi excluído. "
                                    u"A operação solicitada requer um registro atual."},
    {RuntimeError::NotAllowedInContext, u"A operação não é permitida neste contexto."},
    {RuntimeError::NotSupported,
     u"O objeto ou provedor não é capaz de executar a operação solicitada."},
    {RuntimeError::NoSuchItem, u"O item não pode ser encontrado na coleção que corresponde ao nome "
                               u"ou ordinal solicitado."},
    {RuntimeError::ObjectClosed, u"A operação não é permitida quando o objeto está fechado."},
    {RuntimeError::ObjectOpen, u"A operação não é permitida quando o objeto está aberto."},
    {RuntimeError::NoConnection, u"A conexão não pode ser usada para realizar esta operação. "
                                 u"Ela está fechada ou é inválida neste contexto."},
    {RuntimeError::InvalidGridRow, u"Valor de Row inválido"},
    {RuntimeError::InvalidColWidth, u"Valor de ColWidth inválido"},
    {RuntimeError::PanelOutOfBounds, u"Índice fora dos limites"},
    {RuntimeError::EngineFault, u"Erro não especificado"},
    {RuntimeError::SyntaxError, u"Erro de sintaxe (operador faltando) na expressão de consulta"},
    {RuntimeError::MissingParameter,
     u"Nenhum valor foi fornecido para um ou mais parâmetros necessários"},
    {RuntimeError::NoSuchTable, u"Não foi possível encontrar a tabela ou consulta de entrada"},
    {RuntimeError::RowChanged, u"A linha não pode ser localizada para atualização. Alguns valores "
                               u"podem ter sido alterados desde a última leitura."},
    {RuntimeError::MultipleStep, u"A operação de várias etapas gerou erros. "
                                 u"Verifique cada valor de status."},
};

QString publishedDescription(int number)
{
    for (const Published& published : Descriptions) {
        if (published.number == number)
            return published.description.toString();
    }
    return QStringLiteral("Erro definido pelo aplicativo ou pelo objeto");
}

} // namespace

RuntimeError::RuntimeError(int number) : RuntimeError(number, publishedDescription(number)) {}

RuntimeError::RuntimeError(int number, QString description)
    : number_(number), description_(std::move(description)),
      what_(QByteArray::number(number) + ": " + description_.toUtf8())
{
}

QString RuntimeError::text() const
{
    return QStringLiteral("Erro nº ") + QString::number(number_) + u'\n' + description_;
}

RuntimeError RuntimeError::told() const
{
    RuntimeError error = *this;
    error.wasTold_ = true;
    return error;
}
