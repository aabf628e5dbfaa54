/* Opens, reads and closes what has to be looked at to mark or to check models of two textures, on
   so many threads, and does nothing else:

       FloorZek mark|check LIST THREADS

   A check also asks how large each variant is, and lists the folders of the variants. The list
   holds the models' paths, each ended by a zero byte. */

#define _GNU_SOURCE

#include <dirent.h>
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
    FolderCount = 4,
    EntriesSize = 32768,
    LongestPath = 4096,
    MostThreads = 64,
    WindowSize = 4096,
    PathsAtOnce = 64
};

static const char* const Variants[VariantCount] = {
    "tex_pvrtc/000.pvr", "tex_etc/000.pvr", "tex_astc/000.pvr", "tex_dxt/000.dds",
    "tex_pvrtc/001.pvr", "tex_etc/001.pvr", "tex_astc/001.pvr", "tex_dxt/001.dds"};

static const char* const Folders[FolderCount] = {"tex_pvrtc", "tex_etc", "tex_astc", "tex_dxt"};

static int isCheck;
static const char** paths;
static size_t pathCount;
static atomic_size_t nextPath;

static void LookAtVariant(const char* path)
{
    struct stat status;
    const int file = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0)
        return;
    if (isCheck && fstat(file, &status) != 0)
        exit(1);
    close(file);
}

static void ListFolder(const char* path)
{
    char entries[EntriesSize];
    const int folder = open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    while (getdents64(folder, entries, sizeof(entries)) > 0)
        ;
    close(folder);
}

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
        LookAtVariant(variant);
    }
    for (int i = 0; isCheck && i < FolderCount; ++i)
    {
        strcpy(variant + folderLength, Folders[i]);
        ListFolder(variant);
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
    if (argc != 4)
        return 2;
    isCheck = strcmp(argv[1], "check") == 0;
    ReadList(argv[2]);
    const int threadCount = atoi(argv[3]);
    pthread_t threads[MostThreads];
    if (threadCount < 1 || threadCount > MostThreads)
        return 2;
    for (int i = 0; i < threadCount; ++i)
        pthread_create(&threads[i], NULL, Work, NULL);
    for (int i = 0; i < threadCount; ++i)
        pthread_join(threads[i], NULL);
    return 0;
}
