#pragma once

#include "printing/paper/Deflate.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// A PDF file in the making: objects in the syntax of the format, numbered as they come. Streams stand in the file as
/// they are given, all other objects together in deflated streams of objects, as the format has it since version 1.5.
class PdfFile {
public:
    /// `deflate` is used for its own objects.
    explicit PdfFile(Deflate& deflate);

    /// Adds an object and gives its reference, "7 0 R".
    std::string Add(std::string object);
    /// Adds a stream of data with the entries of its dictionary beside its length, "/Length1 100".
    std::string AddStream(std::string_view data, std::string_view entries = {});
    /// The same of deflated data.
    std::string AddDeflated(std::string_view deflated, std::string_view entries = {});

    /// The number of an object that is given later; of several, the first one's.
    int Reserve(int count = 1);
    void Replace(int number, std::string object);

    /// Sets an entry of the file's catalogue or of its trailer.
    void SetInCatalogue(std::string_view key, std::string_view object);
    void SetInTrailer(std::string_view key, std::string_view object);

    /// The bytes of the file, once; its identifier follows from its content.
    std::string Bytes();

    static std::string ReferenceTo(int number);
    /// Puts a reference and a blank behind a text.
    static void AppendReference(std::string& text, int number);
    /// Puts a number and a blank behind a text.
    static void AppendNumber(std::string& text, std::size_t number);

private:
    /// Where an object is: a stream at its place in the file, any other as text until the file is finished.
    struct Object {
        std::string text;
        std::size_t offset = 0; ///< of a stream; 0 for others
    };

    Object& ObjectOf(int number) { return objects[static_cast<std::size_t>(number)]; }
    /// Puts all objects that are no streams into streams, and says of each in which one it is and at which place.
    struct Place {
        int stream = 0, index = 0;
    };
    std::vector<Place> PackObjects();
    std::string References(const std::vector<Place>& places, std::size_t end, int placeSize) const;

    std::string bytes;
    std::vector<Object> objects; ///< by number; none has the number 0
    std::string catalogue, trailer;
    Deflate& deflate;
};

} // namespace quillmere
