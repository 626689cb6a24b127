#include "printing/jobs/PrintPasses.h"

namespace quillmere {

std::optional<std::string> PageListOf(ManualDuplex pass, int pageCount, bool reverse)
{
    if (pass == ManualDuplex::AllPages)
        return std::nullopt;
    const bool swapped = reverse && pageCount % 2 == 0;
    const bool odd = (pass == ManualDuplex::OddPagesOnly) != swapped;
    std::string list;
    for (int page = odd ? 1 : 2; page <= pageCount; page += 2) {
        if (!list.empty())
            list += ',';
        list += std::to_string(page);
    }
    return list;
}

} // namespace quillmere
