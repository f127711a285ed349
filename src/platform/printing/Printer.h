#pragma once

#include <QString>

#include <initializer_list>
#include <memory>
#include <variant>
#include <vector>

class PageDevice;

// Moves to a column of fixed width (the font's average character), 1 at the left edge; beyond the
// present position, else column n of the next line (published language reference, "Tab function").
struct Tab
{
    int column = 1;
};

// One run of text on a page. Twips from the top left of the printable area, points, the upper edge
// of the text cell.
struct TextRun
{
    int x = 0;
    int y = 0;
    double size = 0;
    bool bold = false;
    QString text;
};
using Page = std::vector<TextRun>;

// The classic page object: 1440 twips an inch, origin at the top left of the printable area of an
// A4 sheet. FontSize and FontBold stay until changed, also over EndDoc; CurrentX and CurrentY
// set touch the next print only, which leaves X at 0 and Y one line lower. Text beyond the right
// edge is clipped, or drawn narrower where it passes the edge by little. A print whose line does
// not stand whole above the bottom goes to the top of the next page; a line break within a text
// goes on at the left edge of the next line. Error 482 where the device fails. An error before
// EndDoc leaves the document open: what was drawn goes out with the next EndDoc.
class Printer
{
public:
    using Item = std::variant<QString, Tab>;

    static Printer& instance();

    void setFontSize(double points);
    void setFontBold(bool bold);

    Printer& at(int x, int y);
    Printer& atX(int x);
    Printer& atY(int y);

    void print(const QString& text = {});
    void print(std::initializer_list<Item> items);
    void NewPage();
    // Hands the pages to the device, without empty ones at the end; nothing at all where nothing
    // was drawn. The pages are gone afterwards, also where the device failed.
    void EndDoc();

    // The name under which the document is stored or queued, without ending.
    void setDocumentName(const QString& name) { documentName_ = name; }

    // Where the pages go; chosen in the print dialog, or set by tests.
    void setDevice(std::shared_ptr<PageDevice> device);
    const std::shared_ptr<PageDevice>& device() const { return device_; }

    // Whole printable area, twips.
    static constexpr int Width = 11224;
    static constexpr int Height = 16354;

    // Back to a fresh page object without device, for tests.
    void reset();

private:
    Printer();
    double lineHeight() const;
    double averageWidth() const;
    void beginLine();
    void newLine();
    void moveTo(Tab tab);
    void draw(const QString& text);

    double fontSize_ = 8; // the default of this driver, as good as any other
    bool fontBold_ = false;
    double x_ = 0;
    int y_ = 0;
    std::vector<Page> pages_;
    QString documentName_;
    std::shared_ptr<PageDevice> device_;
};
