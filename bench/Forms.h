#pragma once

#include "printing/forms/P11DPages.h"
#include "support/PrintRoom.h"

#include <fmt/format.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quillmere::bench {

/// A full record; every employee has figures and a name of his own.
inline FieldReader RecordOf(int employee)
{
    return [employee](std::string_view field) -> std::string {
        if (field == "EmployerName")
            return "Marlow & Sons Ltd";
        if (field == "Surname")
            return fmt::format("Smith-{}", employee);
        if (field == "NatIns")
            return "AB123456C";
        if (field.find("Date") != std::string_view::npos || field == "DOB")
            return "06/04/1961";
        if (field.find("Tick") != std::string_view::npos || field.starts_with("FNoC02"))
            return "1";
        if (field.find("Desc") != std::string_view::npos)
            return "As per attached";
        return fmt::format("{:10.2f}", employee * 7.13 + static_cast<double>(field.size()));
    };
}

/// Draws `employees` forms of two pages each as one document.
inline std::shared_ptr<const Document> Forms(test::PrintRoom& room, int firstEmployee, int employees, int pagesEach = 2)
{
    if (room.job.OpenPrintJob("Marlow & Sons Ltd") != Opening::Open)
        throw std::runtime_error("no document");
    for (int employee = firstEmployee; employee < firstEmployee + employees; ++employee) {
        const FieldReader read = RecordOf(employee);
        room.page.NextPrintPage();
        PrintP11D1(room.page, read);
        if (pagesEach > 1) {
            room.page.NextPrintPage();
            PrintP11D2(room.page, read);
        }
    }
    room.job.vsEndDoc();
    return room.vp.Ended();
}

} // namespace quillmere::bench
