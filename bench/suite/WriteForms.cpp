// Writes the forms of so many employees into a PDF file: the program's own way from a record to the finished file, as a
// process of its own.
#include "Forms.h"
#include "frame/CheckedFile.h"

#include <cstdlib>

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 3)
        return 2;
    quillmere::test::PrintRoom room;
    quillmere::bench::Forms(room, 1, std::atoi(arguments[1]));
    quillmere::WriteFileChecked(arguments[2], room.vp.Pdf());
    return 0;
}
