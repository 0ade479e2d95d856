// Writes the curated sample model: vm20_makemodel DATABASE MODEL XML.
//
// Imports the model from the sample database, curates it and saves it as
// model text and as an XML document. The files in examples/ are this
// program's output; the provider tests compare them with a fresh curation, so
// regenerate them after changing the database script or the curation.
#include "shopmodel.h"

#include "model/dmxmlformat.h"
#include "model/vmglobal.h"
#include "providers/dburl.h"
#include "providers/sqldbinfo.h"
#include "support/exception.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 4) {
        std::fprintf(stderr, "usage: vm20_makemodel DATABASE MODEL XML\n");
        return 2;
    }
    QSqlDatabase db;
    int status = 0;
    try {
        db = vm20::OpenDatabaseUrl(QStringLiteral("sqlite:") + args[1], true);
        vm20::TNSqlDBInfo info(db);
        vm20::TNCustomDBStructure model;
        vm20::BuildShopModel(model, info);
        model.SaveToFile(args[2]);
        QStringList xml;
        vm20::SaveDMToXml(model, xml);
        QFile file(args[3]);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)
            || file.write(vm20::GetStringsAsAnsiChar(xml)) < 0 || !file.flush())
            throw vm20::Exception(args[3] + QStringLiteral(": ") + file.errorString());
    } catch (const vm20::Exception &e) {
        std::fprintf(stderr, "vm20_makemodel: %s\n", qPrintable(e.Message()));
        status = 1;
    }
    if (db.isValid())
        vm20::CloseDatabase(db);
    return status;
}
