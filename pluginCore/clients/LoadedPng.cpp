// libpng, loaded when the first PNG picture is met: the glyphs of fonts in colour can be such. Linked in the usual way
// it would keep the plug-in from loading where it lacks. Without it such a picture can't be read.

#include <csetjmp>
#include <dlfcn.h>
#include <png.h>

namespace
{
class Library
{
public:
    Library() = default;

    ~Library()
    {
        if (handle != nullptr)
            dlclose (handle);
    }

    Library (const Library&) = delete;
    Library& operator= (const Library&) = delete;

    void* find (const char* name) const { return handle != nullptr ? dlsym (handle, name) : nullptr; }

private:
    // This name has been the same in all distributions since libpng 1.6.
    void* const handle = dlopen ("libpng16.so.16", RTLD_LAZY | RTLD_LOCAL);
};

void* find (const char* name)
{
    static const Library library;
    return library.find (name);
}

void leave (png_structp png, png_const_charp)
{
    longjmp (*static_cast<jmp_buf*> (png_get_error_ptr (png)), 1);
}
} // namespace

// Only the functions that make a structure are called when the library is not there.
#define CV_FORWARD(Type, name, parameters, arguments)                                      \
    Type name parameters                                                                   \
    {                                                                                      \
        using Result = Type;                                                               \
        static auto* const function = reinterpret_cast<decltype (&(name))> (find (#name)); \
        return function != nullptr ? function arguments : Result();                        \
    }

extern "C"
{
    CV_FORWARD (png_structp,
                png_create_read_struct,
                (png_const_charp version, png_voidp context, png_error_ptr error, png_error_ptr warning),
                (version, context, error, warning))
    CV_FORWARD (png_structp,
                png_create_write_struct,
                (png_const_charp version, png_voidp context, png_error_ptr error, png_error_ptr warning),
                (version, context, error, warning))
    CV_FORWARD (png_infop, png_create_info_struct, (png_const_structrp png), (png))
    CV_FORWARD (void, png_destroy_read_struct, (png_structpp png, png_infopp info, png_infopp end), (png, info, end))
    CV_FORWARD (void, png_destroy_write_struct, (png_structpp png, png_infopp info), (png, info))

    CV_FORWARD (png_voidp, png_get_io_ptr, (png_const_structrp png), (png))
    CV_FORWARD (png_uint_32,
                png_get_IHDR,
                (png_const_structrp png,
                 png_const_inforp info,
                 png_uint_32* width,
                 png_uint_32* height,
                 int* depth,
                 int* colour,
                 int* interlace,
                 int* compression,
                 int* filter),
                (png, info, width, height, depth, colour, interlace, compression, filter))
    CV_FORWARD (png_uint_32,
                png_get_tRNS,
                (png_const_structrp png, png_inforp info, png_bytep* alpha, int* count, png_color_16p* colour),
                (png, info, alpha, count, colour))
    CV_FORWARD (png_uint_32,
                png_get_valid,
                (png_const_structrp png, png_const_inforp info, png_uint_32 flag),
                (png, info, flag))

    CV_FORWARD (void, png_read_info, (png_structrp png, png_inforp info), (png, info))
    CV_FORWARD (void, png_read_image, (png_structrp png, png_bytepp rows), (png, rows))
    CV_FORWARD (void, png_read_end, (png_structrp png, png_inforp info), (png, info))
    CV_FORWARD (void, png_write_info, (png_structrp png, png_const_inforp info), (png, info))
    CV_FORWARD (void, png_write_rows, (png_structrp png, png_bytepp rows, png_uint_32 count), (png, rows, count))
    CV_FORWARD (void, png_write_end, (png_structrp png, png_inforp info), (png, info))

    CV_FORWARD (void,
                png_set_IHDR,
                (png_const_structrp png,
                 png_inforp info,
                 png_uint_32 width,
                 png_uint_32 height,
                 int depth,
                 int colour,
                 int interlace,
                 int compression,
                 int filter),
                (png, info, width, height, depth, colour, interlace, compression, filter))
    CV_FORWARD (void, png_set_add_alpha, (png_structrp png, png_uint_32 filler, int flags), (png, filler, flags))
    CV_FORWARD (png_voidp, png_get_error_ptr, (png_const_structrp png), (png))

    /** JUCE's own answer to an error returns to the library, which does not stand that when it can jump. What JUCE
        gives as the context is the place to jump to.
    */
    void png_set_error_fn (png_structrp png, png_voidp place, png_error_ptr, png_error_ptr warning)
    {
        static auto* const function = reinterpret_cast<decltype (&png_set_error_fn)> (find ("png_set_error_fn"));

        if (function != nullptr)
            function (png, place, leave, warning);
    }

    CV_FORWARD (void, png_set_expand, (png_structrp png), (png))
    CV_FORWARD (void, png_set_gray_to_rgb, (png_structrp png), (png))
    CV_FORWARD (jmp_buf*,
                png_set_longjmp_fn,
                (png_structrp png, png_longjmp_ptr jump, size_t bytes),
                (png, jump, bytes))
    CV_FORWARD (void, png_set_packing, (png_structrp png), (png))
    CV_FORWARD (void, png_set_read_fn, (png_structrp png, png_voidp context, png_rw_ptr read), (png, context, read))
    CV_FORWARD (void,
                png_set_sBIT,
                (png_const_structrp png, png_inforp info, png_const_color_8p bits),
                (png, info, bits))
    CV_FORWARD (void, png_set_shift, (png_structrp png, png_const_color_8p bits), (png, bits))
    CV_FORWARD (void, png_set_strip_16, (png_structrp png), (png))
    CV_FORWARD (void,
                png_set_write_fn,
                (png_structrp png, png_voidp context, png_rw_ptr write, png_flush_ptr flush),
                (png, context, write, flush))
}
