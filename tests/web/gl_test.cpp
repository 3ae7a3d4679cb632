// What OpenGL's calls become: the lists that a page draws.
#include "web/gl/frame_list.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <array>
#include <gtest/gtest.h>
#include <vector>

namespace {

using Indices = std::vector<std::uint32_t>;

// Every test begins with an empty list and the state that the show begins with.
class Gl : public testing::Test {
protected:
    Gl()
    {
        endFrameList();
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glDisable(GL_BLEND);
        glDisable(GL_DEPTH_TEST);
        glDisable(GL_TEXTURE_2D);
        glViewport(0, 0, 100, 100);
        glClear(GL_COLOR_BUFFER_BIT);
    }

    static void begin(GLenum mode, int count)
    {
        glBegin(mode);
        for (int i = 0; i < count; ++i) {
            const std::array<float, 3> position = {static_cast<float>(i), 0.0F, 0.0F};
            glVertex3fv(position.data());
        }
        glEnd();
    }

    // Without the clear.
    static std::vector<FrameCommand> draws()
    {
        const FrameList list = frameList();
        return {list.commands + 1, list.commands + list.commandCount};
    }

    static Indices indices()
    {
        const FrameList list = frameList();
        return {list.indices, list.indices + list.indexCount};
    }
};

} // namespace

TEST_F(Gl, TurnsEverySecondTriangleOfAStrip)
{
    begin(GL_TRIANGLE_STRIP, 5);
    EXPECT_EQ(indices(), (Indices{0, 1, 2, 2, 1, 3, 2, 3, 4}));
}

TEST_F(Gl, DrawsInOneCommandWhatHasOneState)
{
    begin(GL_TRIANGLE_STRIP, 4);
    glColor4f(1.0F, 0.0F, 0.0F, 0.5F); // belongs to the vertices
    glTranslatef(1.0F, 0.0F, 0.0F);
    begin(GL_TRIANGLES, 6);
    ASSERT_EQ(draws().size(), 1U);
    EXPECT_EQ(draws()[0].indexCount, 12U);
    EXPECT_EQ(indices()[6], 4U);

    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    begin(GL_TRIANGLES, 3);
    ASSERT_EQ(draws().size(), 2U);
    EXPECT_EQ(draws()[1].firstIndex, 12U);
    EXPECT_EQ(draws()[1].blendDestination, static_cast<std::uint32_t>(GL_ONE));
}

TEST_F(Gl, ClearsBetweenWhatIsDrawn)
{
    begin(GL_TRIANGLES, 3);
    glClear(GL_DEPTH_BUFFER_BIT);
    begin(GL_TRIANGLES, 3);
    ASSERT_EQ(draws().size(), 3U);
    EXPECT_EQ(draws()[1].clears, static_cast<std::uint32_t>(GL_DEPTH_BUFFER_BIT));
}

TEST_F(Gl, KeepsAFrameUntilTheNextOneBegins)
{
    begin(GL_TRIANGLES, 3);
    endFrameList();
    EXPECT_EQ(indices().size(), 3U);
    glEnable(GL_BLEND); // draws nothing
    EXPECT_EQ(indices().size(), 3U);
    glClear(GL_COLOR_BUFFER_BIT);
    EXPECT_EQ(indices().size(), 0U);
}

// The eye at the origin looks down -z: what is one unit before it, at 90 degrees, fills the view.
TEST_F(Gl, TransformsByBothStacks)
{
    glMatrixMode(GL_PROJECTION);
    gluPerspective(90.0, 2.0, 0.1, 400.0);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glTranslatef(0.0F, 0.0F, -3.0F);
    glRotatef(90.0F, 0.0F, 0.0F, 1.0F);
    glScalef(3.0F, 6.0F, 1.0F);
    glBegin(GL_TRIANGLES);
    const std::array<float, 3> position = {1.0F, -1.0F, 0.0F}; // becomes (6, 3, -3)
    for (int i = 0; i < 3; ++i) {
        glVertex3fv(position.data());
    }
    glEnd();
    glPopMatrix();

    const auto& clip = frameList().vertices[0].position;
    EXPECT_NEAR(clip[0], 3.0, 1e-5);
    EXPECT_NEAR(clip[1], 3.0, 1e-5);
    EXPECT_NEAR(clip[3], 3.0, 1e-5);
    // At the near plane z / w is -1, at the far one 1.
    EXPECT_NEAR(clip[2] / clip[3], (400.1 - 80.0 / 3.0) / 399.9, 1e-5);

    begin(GL_TRIANGLES, 3); // the matrix from before the push
    EXPECT_NEAR(frameList().vertices[4].position[0], 0.5, 1e-5);
}

TEST_F(Gl, LimitsColours)
{
    glColor4f(1.5F, -0.5F, 0.25F, 2.0F);
    begin(GL_TRIANGLES, 3);
    EXPECT_EQ(frameList().vertices[0].colour, (std::array<float, 4>{1.0F, 0.0F, 0.25F, 1.0F}));
}

// With a first index, which is what a grid's rows have.
TEST_F(Gl, DrawsArraysFromAnyPlace)
{
    const std::array<float, 15> positions = {9, 9, 9, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 0, 0};
    const std::array<float, 10> places = {9, 9, 0.1F, 0.2F, 0.3F, 0.4F, 0.5F, 0.6F, 0, 0};
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, positions.data());
    glTexCoordPointer(2, GL_FLOAT, 0, places.data());
    glDrawArrays(GL_TRIANGLE_STRIP, 1, 3);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);

    const FrameList list = frameList();
    ASSERT_EQ(list.vertexCount, 3U);
    EXPECT_EQ(list.vertices[0].position, (std::array<float, 4>{1, 2, 3, 1}));
    EXPECT_EQ(list.vertices[2].texCoord, (std::array<float, 2>{0.5F, 0.6F}));
}

TEST_F(Gl, GivesTexturesNewVersions)
{
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    const std::array<std::uint8_t, 12> first = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, 2, 2, 0, GL_RGB, GL_UNSIGNED_BYTE, first.data());
    const FrameTexture made = frameList().textures[name - 1];
    EXPECT_EQ(made.channels, 3U);
    EXPECT_EQ(made.pixels[11], 12);

    const std::array<std::uint8_t, 12> second{};
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 2, 2, GL_RGB, GL_UNSIGNED_BYTE, second.data());
    EXPECT_NE(frameList().textures[name - 1].version, made.version);
    EXPECT_EQ(frameList().textures[name - 1].pixels[11], 0);

    begin(GL_TRIANGLES, 3); // texturing is off
    glEnable(GL_TEXTURE_2D);
    begin(GL_TRIANGLES, 3);
    ASSERT_EQ(draws().size(), 2U);
    EXPECT_EQ(draws()[0].texture, 0U);
    EXPECT_EQ(draws()[1].texture, name);
}

TEST_F(Gl, RoundsTheWidthOfLines)
{
    glLineWidth(4.6F);
    const std::array<float, 3> from = {0.0F, 0.0F, 0.0F};
    const std::array<float, 3> to = {0.5F, 0.0F, 0.0F};
    glBegin(GL_LINES);
    glVertex3fv(from.data());
    glVertex3fv(to.data());
    glEnd();
    const FrameList list = frameList();
    ASSERT_EQ(list.indexCount, 6U);
    EXPECT_NEAR(list.vertices[1].position[1] - list.vertices[0].position[1], 5.0 / 50.0, 1e-6);
}
