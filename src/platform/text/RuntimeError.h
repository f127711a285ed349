#pragma once

#include <QString>

#include <exception>

// The one error of the platform and the database: a number that the shop's messages show as
// "Erro nº", and its description. Numbers follow the published lists of trappable errors and of
// data access errors; descriptions are Portuguese.
class RuntimeError : public std::exception
{
public:
    enum Number
    {
        InvalidCall = 5,
        Overflow = 6,
        TypeMismatch = 13,
        FileNotFound = 53,
        FileAlreadyExists = 58,
        DiskFull = 61,
        DeviceUnavailable = 68,
        PermissionDenied = 70,
        PathFileAccess = 75,
        PathNotFound = 76,
        ObjectNotSet = 91,
        InvalidNull = 94,
        NoSuchArrayElement = 340,
        InvalidPropertyValue = 380,
        InvalidPropertyIndex = 381,
        AlreadyDisplayed = 400,
        ModalFormDisplayed = 401,
        PrinterFault = 482,
        WrongArguments = 3001,
        NoCurrentRecord = 3021,
        NotAllowedInContext = 3219,
        NotSupported = 3251,
        NoSuchItem = 3265,
        ObjectClosed = 3704,
        ObjectOpen = 3705,
        NoConnection = 3709,
        InvalidGridRow = 30009,
        InvalidColWidth = 30014,
        PanelOutOfBounds = 35600,
        EngineFault = -2147467259,
        SyntaxError = -2147217900,
        MissingParameter = -2147217904,
        NoSuchTable = -2147217865,
        RowChanged = -2147217864,
        MultipleStep = -2147217887,
    };

    // The published description of the number, in Portuguese.
    explicit RuntimeError(int number);
    RuntimeError(int number, QString description);

    int number() const { return number_; }
    const QString& description() const { return description_; }
    // As the boxes show it: "Erro nº ", number, line break, description.
    QString text() const;
    const char* what() const noexcept override { return what_.constData(); }

    // The same error, of which the user was told already: whoever traps it shows no further box.
    RuntimeError told() const;
    bool wasTold() const { return wasTold_; }

private:
    int number_;
    QString description_;
    QByteArray what_;
    bool wasTold_ = false;
};
