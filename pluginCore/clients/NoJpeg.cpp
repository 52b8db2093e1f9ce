// In place of libjpeg, whose name and structures differ from one distribution to the next. Nothing in the plug-in reads
// or writes JPEG pictures; JUCE's code for them, which is always compiled, finds here that none can be read.

#include <cstdio>

#include <jpeglib.h>

namespace
{
/** Enough for what JUCE asks for before it hears that the picture can't be read. */
void* getSpareMemory (j_common_ptr, int, size_t)
{
    thread_local jpeg_source_mgr memory;
    return &memory;
}

JSAMPARRAY getNoRows (j_common_ptr, int, JDIMENSION, JDIMENSION)
{
    thread_local JSAMPROW row;
    return &row;
}

jpeg_memory_mgr* getMemoryManager()
{
    static jpeg_memory_mgr manager = []
    {
        jpeg_memory_mgr result {};
        result.alloc_small = getSpareMemory;
        result.alloc_sarray = getNoRows;
        return result;
    }();

    return &manager;
}
} // namespace

extern "C"
{
    void jpeg_CreateDecompress (j_decompress_ptr picture, int, size_t)
    {
        picture->mem = getMemoryManager();
    }

    int jpeg_read_header (j_decompress_ptr picture, boolean)
    {
        picture->err->error_exit (reinterpret_cast<j_common_ptr> (picture));
        return JPEG_SUSPENDED;
    }

    boolean jpeg_resync_to_restart (j_decompress_ptr, int)
    {
        return FALSE;
    }

    boolean jpeg_start_decompress (j_decompress_ptr)
    {
        return FALSE;
    }

    JDIMENSION jpeg_read_scanlines (j_decompress_ptr, JSAMPARRAY, JDIMENSION)
    {
        return 0;
    }

    boolean jpeg_finish_decompress (j_decompress_ptr)
    {
        return FALSE;
    }

    void jpeg_calc_output_dimensions (j_decompress_ptr) {}

    void jpeg_destroy_decompress (j_decompress_ptr) {}

    void jpeg_CreateCompress (j_compress_ptr picture, int, size_t)
    {
        picture->mem = getMemoryManager();
    }

    /** No row is asked for then. */
    void jpeg_start_compress (j_compress_ptr picture, boolean)
    {
        picture->next_scanline = picture->image_height;
    }

    JDIMENSION jpeg_write_scanlines (j_compress_ptr, JSAMPARRAY, JDIMENSION)
    {
        return 0;
    }

    void jpeg_set_defaults (j_compress_ptr) {}

    void jpeg_set_quality (j_compress_ptr, int, boolean) {}

    void jpeg_finish_compress (j_compress_ptr) {}

    void jpeg_destroy_compress (j_compress_ptr) {}
}
