#include "partslist/ordering.hpp"

#include <algorithm>
#include <numeric>
#include <tuple>

#include "partslist/numbering.hpp"
#include "partslist/partslist.hpp"
#include "text/czech_order.hpp"
#include "text/text.hpp"

namespace partslist {

namespace {

struct OrderKey {
    bool is_last = false;
    std::string first;
    std::string second;
};

bool operator<(const OrderKey& left, const OrderKey& right) {
    return std::tie(left.is_last, left.first, left.second) <
           std::tie(right.is_last, right.first, right.second);
}

std::vector<std::size_t> OrderOf(const std::vector<OrderKey>& keys) {
    std::vector<std::size_t> order(keys.size());
    std::iota(order.begin(), order.end(), std::size_t{1});
    std::ranges::stable_sort(order, [&keys](std::size_t left, std::size_t right) {
        return keys[left - 1] < keys[right - 1];
    });
    return order;
}

// As after a drag: positions and sheets are numbered anew.
void PutInOrder(controls::ListView& list, const std::vector<std::size_t>& order) {
    list.Arrange(order);
    NumberRows(list);
    if (const auto current = list.CurrentRow()) {
        list.EnsureVisible(*current);
    }
}

} // namespace

std::vector<std::size_t> OrderByName(const std::vector<controls::ListRow>& rows) {
    std::vector<OrderKey> keys;
    keys.reserve(rows.size());
    for (const controls::ListRow& row : rows) {
        keys.push_back({.is_last = false, .first = text::CzechOrderKey(row.text), .second = {}});
    }
    return OrderOf(keys);
}

std::vector<std::size_t> OrderByMaterial(const std::vector<controls::ListRow>& rows) {
    std::vector<OrderKey> keys;
    keys.reserve(rows.size());
    for (const controls::ListRow& row : rows) {
        const std::string_view material = text::TrimBlanks(controls::SubItemOf(row, kMaterial));
        keys.push_back({.is_last = material.empty(),
                        .first = text::CzechOrderKey(material),
                        .second = text::CzechOrderKey(row.text)});
    }
    return OrderOf(keys);
}

void m_Seradit_jmeno_Click(Form1& form) {
    PutInOrder(form.ListView1, OrderByName(form.ListView1.Rows()));
}

void m_Seradit_material_Click(Form1& form) {
    PutInOrder(form.ListView1, OrderByMaterial(form.ListView1.Rows()));
}

} // namespace partslist
