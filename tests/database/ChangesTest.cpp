#include "DatabaseTest.h"

using ChangesTest = DatabaseTest;

TEST_F(ChangesTest, NewRowStaysPendingUntilItIsStored)
{
    auto table = open(u"SELECT * FROM Pecas order by codigo"_s);
    EXPECT_EQ(errorOf([&] { add(*table, u"0000001"_s); }), RuntimeError::MultipleStep) << "no name";
    for (const auto& move : {&Recordset::MoveFirst, &Recordset::AddNew, &Recordset::Delete})
        EXPECT_EQ(errorOf([&] { ((*table).*move)(); }), RuntimeError::NotAllowedInContext);
    table->Fields(u"DESCRICAO"_s) = u""_s;
    table->Update();
    EXPECT_EQ(stored(u"CODIGO"_s, u"Pecas"_s), QStringList{u"0000001"_s});
}

TEST_F(ChangesTest, ReadOnlyAndClosedRecordsetsRefuse)
{
    addSuppliers({u"a"_s});
    auto table = open(suppliers_);
    table->Fields(1) = u"x"_s;
    table->MoveNext(); // writes it
    EXPECT_EQ(stored(u"NOMEFORNECEDOR"_s), QStringList{u"x"_s});
    EXPECT_EQ(errorOf([&] { set(*table, 0, u"x"_s); }), RuntimeError::NoCurrentRecord);

    table = open(suppliers_, CursorType::Static, LockType::ReadOnly);
    EXPECT_EQ(errorOf([&] { table->Fields(0) = u"x"_s; }), RuntimeError::NotSupported);
    EXPECT_EQ(errorOf([&] { table->AddNew(); }), RuntimeError::NotSupported);
    EXPECT_EQ(errorOf([&] { table->Delete(); }), RuntimeError::NotSupported);
    EXPECT_EQ(errorOf([&] { table->Fields(10); }), RuntimeError::NoSuchItem);
    EXPECT_EQ(errorOf([&] { table->Fields(u"nada"_s); }), RuntimeError::NoSuchItem);

    const auto connection = connect(mainFile());
    const auto reopen = [&] {
        table->Open(suppliers_, connection, CursorType::Static, LockType::Optimistic);
    };
    EXPECT_EQ(errorOf(reopen), RuntimeError::ObjectOpen);
    table->Close();
    EXPECT_EQ(errorOf([&] { table->MoveFirst(); }), RuntimeError::ObjectClosed);
    reopen();
    table->AddNew();
    connection->Close();
    EXPECT_FALSE(table->isOpen()) << "closes with its connection, the pending row with it";
    EXPECT_EQ(errorOf(reopen), RuntimeError::NoConnection);
    EXPECT_EQ(stored(u"count(*)"_s), QStringList{u"1"_s});
}
