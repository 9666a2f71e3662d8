#include "painter.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>

#include "com/owned.hpp"
#include "com/utf.hpp"

namespace simulator {

namespace {

constexpr COLORREF kDesk = RGB(0xb4, 0xba, 0xc4);
constexpr COLORREF kShadow = RGB(0x8e, 0x95, 0xa1);
constexpr COLORREF kPaper = RGB(0xff, 0xff, 0xff);
constexpr COLORREF kInk = RGB(0x1a, 0x1a, 0x1a);
constexpr COLORREF kFrame = RGB(0x3c, 0x6e, 0xc8);
constexpr COLORREF kActiveFrame = RGB(0xd0, 0x30, 0x30);
constexpr COLORREF kSelected = RGB(0xe8, 0x74, 0x00);
constexpr COLORREF kSelectedFill = RGB(0xff, 0xf1, 0xdf);
constexpr COLORREF kTreeTop = RGB(0x33, 0x3f, 0x66);
constexpr COLORREF kTreeBottom = RGB(0xa9, 0xb4, 0xcf);
constexpr COLORREF kTreeText = RGB(0xff, 0xff, 0xff);
constexpr COLORREF kTreeLine = RGB(0x86, 0x93, 0xba);
constexpr COLORREF kAssembly = RGB(0xf5, 0xc8, 0x42);
constexpr COLORREF kPart = RGB(0x9f, 0xd4, 0x7a);

constexpr int kMargin = 14; // pixels around the sheet

// Of the tree, in pixels at 96 DPI.
constexpr int kTreeMargin = 14;
constexpr int kTreeLineHeight = 20;
constexpr int kTreeIndent = 22;
constexpr int kTreeMark = 12; // the edge of the square before a name
constexpr int kTextHeight = 13;

int Scaled(int pixels, UINT dpi) {
    return MulDiv(pixels, static_cast<int>(dpi), USER_DEFAULT_SCREEN_DPI);
}

// A drawing object chosen into a device context for as long as it lives.
class Chosen {
  public:
    Chosen(HDC dc, HGDIOBJ object) : dc_(dc), object_(object), before_(SelectObject(dc, object)) {}
    ~Chosen() {
        SelectObject(dc_, before_);
        DeleteObject(object_);
    }
    Chosen(const Chosen&) = delete;
    Chosen& operator=(const Chosen&) = delete;

  private:
    HDC dc_;
    HGDIOBJ object_;
    HGDIOBJ before_;
};

void Fill(HDC dc, const RECT& area, COLORREF color) {
    SetDCBrushColor(dc, color);
    FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

int Round(double number) {
    return static_cast<int>(std::lround(std::clamp(number, -1e6, 1e6)));
}

// Where the sheet stands on the screen: as large as fits.
class Scale {
  public:
    Scale(const RECT& area, const Sheet& sheet) {
        const double width = std::max<double>(area.right - area.left - 2 * kMargin, 1);
        const double height = std::max<double>(area.bottom - area.top - 2 * kMargin, 1);
        pixels_ = std::min(width / sheet.width, height / sheet.height);
        left_ = area.left + kMargin + (width - sheet.width * pixels_) / 2;
        bottom_ = area.bottom - kMargin - (height - sheet.height * pixels_) / 2;
    }

    [[nodiscard]] int X(double x) const { return Round(left_ + x * pixels_); }
    [[nodiscard]] int Y(double y) const { return Round(bottom_ - y * pixels_); }
    [[nodiscard]] int Length(double length) const { return Round(length * pixels_); }
    [[nodiscard]] RECT Box(const Rectangle& place) const {
        return {X(place.left), Y(place.top), X(place.right), Y(place.bottom)};
    }

  private:
    double pixels_; // per millimetre
    double left_;
    double bottom_;
};

class SheetPainter {
  public:
    SheetPainter(HDC dc, const RECT& area, const Document& drawing)
        : dc_(dc), drawing_(drawing), sheet_(*drawing.active_sheet), scale_(area, sheet_) {}

    void Paint() {
        constexpr int kShadowWidth = 4;
        const RECT paper = scale_.Box({0, 0, sheet_.width, sheet_.height});
        RECT shadow = paper;
        OffsetRect(&shadow, kShadowWidth, kShadowWidth);
        Fill(dc_, shadow, kShadow);
        Fill(dc_, paper, kPaper);
        SetBkMode(dc_, TRANSPARENT);
        for (const auto& view : sheet_.views) {
            PaintView(*view, view == sheet_.active_view);
        }
    }

  private:
    void PaintView(const View& view, bool active) {
        {
            const Chosen pen(dc_, CreatePen(PS_SOLID, PenWidth(view.line_width), kInk));
            const Chosen brush(dc_, GetStockObject(NULL_BRUSH));
            for (const Line& line : view.lines) {
                MoveToEx(dc_, scale_.X(view.x + line.from_x), scale_.Y(view.y + line.from_y),
                         nullptr);
                LineTo(dc_, scale_.X(view.x + line.to_x), scale_.Y(view.y + line.to_y));
            }
            for (const Circle& circle : view.circles) {
                const int radius = scale_.Length(circle.radius);
                const int x = scale_.X(view.x + circle.x);
                const int y = scale_.Y(view.y + circle.y);
                Ellipse(dc_, x - radius, y - radius, x + radius + 1, y + radius + 1);
            }
        }
        if (view.frame_width > 0) {
            const Chosen pen(dc_, CreatePen(PS_DASH, 1, active ? kActiveFrame : kFrame));
            const Chosen brush(dc_, GetStockObject(NULL_BRUSH));
            const RECT frame =
                scale_.Box({view.x - view.frame_width / 2, view.y - view.frame_height / 2,
                            view.x + view.frame_width / 2, view.y + view.frame_height / 2});
            ::Rectangle(dc_, frame.left, frame.top, frame.right, frame.bottom);
        }
        for (const auto& table : view.tables) {
            PaintTable(view, table);
        }
        for (const auto& text : view.texts) {
            SetTextColor(dc_, IsSelected(drawing_, text) ? kSelected : kInk);
            const Chosen font(dc_, NewFont(*text));
            const std::wstring wide = com::Widen(text->text);
            RECT box{scale_.X(view.x + text->x), scale_.Y(view.y + text->y), 0, 0};
            DrawTextW(dc_, wide.c_str(), -1, &box, DT_NOCLIP | DT_NOPREFIX);
        }
    }

    void PaintTable(const View& view, const std::shared_ptr<Table>& element) {
        const Table& table = Displayed(*element);
        const simulator::Rectangle place = Place(view, *element);
        const bool selected = IsSelected(drawing_, element);
        if (selected) {
            Fill(dc_, scale_.Box(place), kSelectedFill);
        }
        const std::size_t columns = table.column_sizes.size();
        std::vector<int> edges{scale_.X(place.left)};
        double x = place.left;
        for (const double size : table.column_sizes) {
            x += size;
            edges.push_back(scale_.X(x));
        }

        const Chosen pen(
            dc_, CreatePen(PS_SOLID, PenWidth(element->line_width), selected ? kSelected : kInk));
        SetTextColor(dc_, kInk);
        double y = place.top;
        HorizontalLine(edges.front(), edges.back(), scale_.Y(y));
        for (std::size_t row = 0; row < table.row_sizes.size(); ++row) {
            const int top = scale_.Y(y);
            y -= table.row_sizes[row];
            const int bottom = scale_.Y(y);
            RECT visible{edges.front(), top, edges.back() + 1, bottom + 1};
            if (RectVisible(dc_, &visible) == FALSE) {
                continue;
            }
            for (std::size_t column = 0; column < columns; ++column) {
                PaintCell(*table.Cell(row, column),
                          {edges[column], top, edges[column + 1], bottom});
            }
            HorizontalLine(edges.front(), edges.back(), bottom);
        }
        for (const int edge : edges) {
            MoveToEx(dc_, edge, scale_.Y(place.top), nullptr);
            LineTo(dc_, edge, scale_.Y(y) + 1);
        }
    }

    void PaintCell(const Text& cell, RECT box) {
        if (cell.text.empty()) {
            return;
        }
        const HGDIOBJ before = SelectObject(dc_, CellFont(cell));
        const int margin = std::max(scale_.Length(1), 2);
        box.left += margin;
        box.right -= 1;
        const std::wstring wide = com::Widen(cell.text);
        DrawTextW(dc_, wide.c_str(), -1, &box,
                  DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
        SelectObject(dc_, before);
    }

    void HorizontalLine(int from, int to, int y) {
        MoveToEx(dc_, from, y, nullptr);
        LineTo(dc_, to + 1, y);
    }

    // A drawing's font sizes are the height of its letters.
    [[nodiscard]] HFONT NewFont(const Text& text) const {
        constexpr double kHeightOfLetters = 0.72; // of a font's height
        const std::string face = text.font_name.substr(0, text.font_name.find(" (TrueType)"));
        const int height = std::max(scale_.Length(text.font_size / kHeightOfLetters), 4);
        return CreateFontW(-height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                           OUT_TT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                           DEFAULT_PITCH | FF_SWISS,
                           com::Widen(face).substr(0, LF_FACESIZE - 1).c_str());
    }

    // A table has a few fonts in many cells.
    HFONT CellFont(const Text& cell) {
        auto& font = fonts_[{cell.font_name, cell.font_size}];
        if (font == nullptr) {
            font.reset(NewFont(cell));
        }
        return font.get();
    }

    [[nodiscard]] int PenWidth(int line_width) const {
        constexpr double kThinnest = 0.13; // millimetres
        constexpr double kStep = 0.35;
        const double width = line_width <= 1 ? kThinnest : kStep * std::min(line_width - 1, 8);
        return std::max(scale_.Length(width), std::min(line_width, 2));
    }

    HDC dc_;
    const Document& drawing_;
    const Sheet& sheet_;
    Scale scale_;
    std::map<std::pair<std::string, double>, com::Owned<HFONT>> fonts_;
};

// Draws the lines of a product's tree that are visible. Sub-assemblies that are not are passed over
// by their number of lines, so that a large product costs what a small one does.
class TreePainter {
  public:
    TreePainter(HDC dc, const RECT& area, UINT dpi, int first_line)
        : dc_(dc), area_(area), dpi_(dpi), first_(first_line),
          last_(first_line + TreeLinesIn(area, dpi)) {}

    void Paint(const Product& product, int depth) {
        if (line_ >= first_) {
            PaintLine(product, depth);
        }
        ++line_;
        for (const auto& instance : product.instances) {
            if (line_ > last_) {
                return;
            }
            if (const int lines = Lines(*instance.reference); line_ + lines <= first_) {
                line_ += lines;
            } else {
                Paint(*instance.reference, depth + 1);
            }
        }
    }

    int Lines(const Product& product) {
        if (const auto known = lines_.find(&product); known != lines_.end()) {
            return known->second;
        }
        constexpr int kMost = 1'000'000'000;
        int lines = 1;
        const Product* previous = nullptr;
        int each = 0;
        for (const auto& instance : product.instances) {
            if (instance.reference.get() != previous) {
                previous = instance.reference.get();
                each = Lines(*previous);
            }
            lines = each > kMost - lines ? kMost : lines + each;
        }
        lines_[&product] = lines;
        return lines;
    }

  private:
    void PaintLine(const Product& product, int depth) {
        const int height = Pixels(kTreeLineHeight);
        const int indent = Pixels(kTreeIndent);
        const int half_mark = Pixels(kTreeMark) / 2;
        const int first_left = area_.left + Pixels(kTreeMargin);
        const int top = area_.top + Pixels(kTreeMargin) + (line_ - first_) * height;
        const int left = first_left + depth * indent;
        const int middle = top + height / 2;
        {
            const Chosen pen(dc_, CreatePen(PS_SOLID, 1, kTreeLine));
            for (int level = 1; level <= depth; ++level) {
                const int x = first_left + (level - 1) * indent + half_mark;
                MoveToEx(dc_, x, top, nullptr);
                LineTo(dc_, x, level == depth ? middle + 1 : top + height);
            }
            if (depth > 0) {
                MoveToEx(dc_, left - indent + half_mark, middle, nullptr);
                LineTo(dc_, left, middle);
            }
        }
        const bool assembly = !product.instances.empty();
        RECT mark{left, middle - half_mark, left + 2 * half_mark, middle + half_mark};
        RECT box{mark.right + half_mark, top, area_.right, top + height};
        Fill(dc_, mark, kTreeTop);
        InflateRect(&mark, -1, -1);
        Fill(dc_, mark, assembly ? kAssembly : kPart);
        if (assembly) {
            InflateRect(&mark, -half_mark / 2, -half_mark / 2);
            Fill(dc_, mark, kTreeTop);
        }
        const std::wstring text = com::Widen(product.part_number);
        DrawTextW(dc_, text.c_str(), -1, &box, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    }

    [[nodiscard]] int Pixels(int length) const { return Scaled(length, dpi_); }

    HDC dc_;
    RECT area_;
    UINT dpi_;
    int first_;
    int last_;
    int line_ = 0;
    std::unordered_map<const Product*, int> lines_;
};

BYTE Between(BYTE top, BYTE bottom, int step, int steps) {
    return static_cast<BYTE>(top + (bottom - top) * step / steps);
}

void FillTreeBackground(HDC dc, const RECT& area) {
    constexpr int kSteps = 48;
    const int height = area.bottom - area.top;
    for (int step = 0; step < kSteps; ++step) {
        Fill(dc,
             {area.left, area.top + height * step / kSteps, area.right,
              area.top + height * (step + 1) / kSteps},
             RGB(Between(GetRValue(kTreeTop), GetRValue(kTreeBottom), step, kSteps),
                 Between(GetGValue(kTreeTop), GetGValue(kTreeBottom), step, kSteps),
                 Between(GetBValue(kTreeTop), GetBValue(kTreeBottom), step, kSteps)));
    }
}

void PaintNote(HDC dc, RECT area, const wchar_t* note) {
    DrawTextW(dc, note, -1, &area, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
}

} // namespace

void PaintDocument(HDC dc, const RECT& area, UINT dpi, const Document* document, int first_line) {
    const Chosen font(dc, CreateFontW(-Scaled(kTextHeight, dpi), 0, 0, 0, FW_NORMAL, FALSE, FALSE,
                                      FALSE, DEFAULT_CHARSET, OUT_TT_PRECIS, CLIP_DEFAULT_PRECIS,
                                      CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_SWISS, L"Segoe UI"));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, kTreeText);
    if (document != nullptr && document->kind == DocumentKind::kDrawing) {
        Fill(dc, area, kDesk);
        SheetPainter(dc, area, *document).Paint();
        return;
    }
    FillTreeBackground(dc, area);
    if (document == nullptr) {
        PaintNote(dc, area, L"No document is open. Documents are opened from the File menu.");
    } else if (document->product == nullptr) {
        PaintNote(dc, area, com::Widen(document->name).c_str());
    } else {
        TreePainter(dc, area, dpi, first_line).Paint(*document->product, 0);
    }
}

std::shared_ptr<Table> TableAt(const RECT& area, const Document& document, POINT point) {
    if (document.active_sheet == nullptr) {
        return nullptr;
    }
    const Scale scale(area, *document.active_sheet);
    std::shared_ptr<Table> found; // the one drawn last lies on top
    for (const auto& view : document.active_sheet->views) {
        for (const auto& table : view->tables) {
            RECT box = scale.Box(Place(*view, *table));
            InflateRect(&box, 2, 2);
            if (PtInRect(&box, point) != FALSE) {
                found = table;
            }
        }
    }
    return found;
}

int TreeLines(const Product& product) {
    return TreePainter(nullptr, {}, USER_DEFAULT_SCREEN_DPI, 0).Lines(product);
}

int TreeLinesIn(const RECT& area, UINT dpi) {
    const int height = area.bottom - area.top - 2 * Scaled(kTreeMargin, dpi);
    return std::max(height / Scaled(kTreeLineHeight, dpi), 1);
}

} // namespace simulator
