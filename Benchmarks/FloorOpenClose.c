/* Opens and closes each file that ZEKTexComp looks for beside a model, and does nothing else:

       FloorOpenClose textures FOLDER/ COUNT
       FloorOpenClose probes FOLDER/ COUNT */

#include <fcntl.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

enum
{
    FamilyCount = 4,
    CubeFaceCount = 6
};

static const char* const Families[FamilyCount] = {"pvrtc", "etc", "astc", "dxt"};
static const char* const Extensions[FamilyCount] = {"pvr", "pvr", "pvr", "dds"};

static char path[4096];

static char* Append(char* end, const char* text)
{
    const size_t length = strlen(text);
    memcpy(end, text, length + 1);
    return end + length;
}

/* Appends a number of as many digits as it needs, but at least of the given count. */
static char* AppendNumber(char* end, long number, int digitCount)
{
    char digits[20];
    int length = 0;
    for (; number > 0 || length < digitCount; number /= 10)
        digits[length++] = (char)('0' + number % 10);
    while (length > 0)
        *end++ = digits[--length];
    *end = '\0';
    return end;
}

static void OpenAndClose(void)
{
    const int file = open(path, O_RDONLY);
    if (file >= 0)
        close(file);
}

static void LookForTexture(char* folderEnd, long index)
{
    for (int family = 0; family < FamilyCount; ++family)
    {
        char* end = Append(Append(Append(folderEnd, "tex_"), Families[family]), "/");
        Append(Append(AppendNumber(end, index, 3), "."), Extensions[family]);
        OpenAndClose();
    }
}

static void LookForProbe(char* folderEnd, long index)
{
    for (int face = 0; face < CubeFaceCount; ++face)
    {
        for (int family = 0; family < FamilyCount; ++family)
        {
            char* end = Append(Append(folderEnd, "tex_reflection_cube_"), Families[family]);
            end = AppendNumber(Append(end, "\\"), index, 1);
            end = AppendNumber(Append(end, "\\reflection_cube_"), face, 1);
            Append(Append(end, "."), Extensions[family]);
            OpenAndClose();
        }
    }
}

int main(int argc, char* argv[])
{
    if (argc != 4 || strlen(argv[2]) > sizeof(path) - 100)
        return 2;
    const int isProbes = strcmp(argv[1], "probes") == 0;
    char* folderEnd = Append(path, argv[2]);
    const long count = atol(argv[3]);
    for (long index = 0; index < count; ++index)
    {
        if (isProbes)
            LookForProbe(folderEnd, index);
        else
            LookForTexture(folderEnd, index);
    }
    return 0;
}
