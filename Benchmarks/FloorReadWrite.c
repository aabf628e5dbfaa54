/* Reads a file whole and writes it back whole: the least that a program can do which changes bytes
   of it in memory. A large buffer lies on huge pages, which is faster. */

#define _GNU_SOURCE

#include <fcntl.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

static char* allocate(size_t size)
{
    const size_t huge_page = 2 * 1024 * 1024;
    if (size < 2 * huge_page)
        return malloc(size);
    char* image = aligned_alloc(huge_page, (size + huge_page - 1) / huge_page * huge_page);
    if (image != NULL)
        madvise(image, size, MADV_HUGEPAGE);
    return image;
}

int main(int argc, char* argv[])
{
    if (argc != 2)
        return 2;

    int file = open(argv[1], O_RDONLY);
    struct stat status;
    if (file < 0 || fstat(file, &status) != 0)
        return 1;
    char* image = allocate((size_t)status.st_size);
    if (image == NULL || read(file, image, (size_t)status.st_size) != status.st_size)
        return 1;
    close(file);

    file = open(argv[1], O_WRONLY | O_CREAT | O_TRUNC, 0666);
    if (file < 0 || write(file, image, (size_t)status.st_size) != status.st_size)
        return 1;
    return close(file) != 0;
}
