#include "Application.h"
#include "Buscacli.h"
#include "Buscafornecedor.h"
#include "EventTransactions.h"
#include "Form1Cli.h"
#include "Form1Configurar.h"
#include "Form1Defeitos.h"
#include "Form1For.h"
#include "Form1Pec.h"
#include "Form1log.h"
#include "Form1manutencao.h"
#include "Form1pecabusca.h"
#include "Form1pecavenda.h"
#include "Form1pedido.h"
#include "Form1principal.h"
#include "Form1relatorio.h"
#include "Form1servico.h"
#include "FormRegistry.h"
#include "HostPaths.h"
#include "frmAbout.h"

#include <QApplication>
#include <QDir>
#include <QIcon>

using namespace Qt::Literals::StringLiterals;

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    prepareApplication(application);
    QDir::setCurrent(applicationFolder());
    installEventTransactions();

    addForm<Form1principal>();
    addForm<Form1log>();
    addForm<Form1Cli>();
    addForm<Buscacli>();
    addForm<Form1Pec>();
    addForm<Form1pecabusca>();
    addForm<Form1pecavenda>();
    addForm<Form1pedido>();
    addForm<Form1manutencao>();
    addForm<Form1For>();
    addForm<Buscafornecedor>();
    addForm<Form1Defeitos>();
    addForm<Form1relatorio>();
    addForm<Form1servico>();
    addForm<Form1Configurar>();
    addForm<frmAbout>();

    QApplication::setWindowIcon(QIcon(u":/icons/vorbelo.svg"_s));
    principal().show();
    return runApplication();
}
