/* Opens, reads and closes what has to be looked at to mark models of two textures, on so many
   threads, and does nothing else:

       FloorMark LIST THREADS

   The list holds the models' paths, each ended by a zero byte. */

#include <fcntl.h>
#include <pthread.h>
#include <stdatomic.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

enum
{
    VariantCount = 8,
    LongestPath = 4096,
    MostThreads = 64,
    WindowSize = 4096,
    PathsAtOnce = 64
};

static const char* const Variants[VariantCount] = {
    "tex_pvrtc/000.pvr", "tex_etc/000.pvr", "tex_astc/000.pvr", "tex_dxt/000.dds",
    "tex_pvrtc/001.pvr", "tex_etc/001.pvr", "tex_astc/001.pvr", "tex_dxt/001.dds"};

static const char** paths;
static size_t pathCount;
static atomic_size_t nextPath;

static void LookAt(const char* path)
{
    char window[WindowSize];
    struct stat status;
    const int model = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (model < 0 || fstat(model, &status) != 0 || pread(model, window, sizeof(window), 0) < 0)
        exit(1);

    char variant[LongestPath];
    const size_t folderLength = (size_t)(strrchr(path, '/') + 1 - path);
    memcpy(variant, path, folderLength);
    for (int i = 0; i < VariantCount; ++i)
    {
        strcpy(variant + folderLength, Variants[i]);
        const int file = open(variant, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        if (file >= 0)
            close(file);
    }
    close(model);
}

static void* Work(void* unused)
{
    for (;;)
    {
        const size_t first = atomic_fetch_add(&nextPath, PathsAtOnce);
        if (first >= pathCount)
            return unused;
        for (size_t i = first; i < pathCount && i < first + PathsAtOnce; ++i)
            LookAt(paths[i]);
    }
}

static void ReadList(const char* name)
{
    struct stat status;
    const int file = open(name, O_RDONLY);
    if (file < 0 || fstat(file, &status) != 0)
        exit(1);
    const size_t size = (size_t)status.st_size;
    char* list = malloc(size);
    paths = malloc(size * sizeof(*paths));
    if (list == NULL || paths == NULL || read(file, list, size) != status.st_size)
        exit(1);
    close(file);
    for (const char* path = list; path < list + size; path += strlen(path) + 1)
        paths[pathCount++] = path;
}

int main(int argc, char* argv[])
{
    if (argc != 3)
        return 2;
    ReadList(argv[1]);
    const int threadCount = atoi(argv[2]);
    pthread_t threads[MostThreads];
    if (threadCount < 1 || threadCount > MostThreads)
        return 2;
    for (int i = 0; i < threadCount; ++i)
        pthread_create(&threads[i], NULL, Work, NULL);
    for (int i = 0; i < threadCount; ++i)
        pthread_join(threads[i], NULL);
    return 0;
}
